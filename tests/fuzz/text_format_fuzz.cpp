#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/result_notes.h"
#include "ui/text_format.h"

#include <cstdint>
#include <cstdlib>
#include <string>

// A translation and its arguments: the first byte is the size of the buffer, the second to fourth
// are the lengths of the arguments, the rest is the format. The text must stay within its buffer,
// and every character of it must come from the format or from the arguments.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const std::size_t units = input.byte() * std::size_t{8};
    const auto wideUnits = static_cast<std::size_t>(input.byte());
    const auto narrowBytes = static_cast<std::size_t>(input.byte());
    const auto number = input.number<std::int32_t>();
    const std::string_view wideBytes = input.text(wideUnits);
    const std::wstring wide(wideBytes.begin(), wideBytes.end());
    const std::string narrow(input.text(narrowBytes));
    const std::string_view rest = input.text(size);
    const std::wstring format(rest.begin(), rest.end());

    const std::wstring text = formatText(format, {wide, narrow, number, wide}, units);

    if (units > 0 ? text.size() >= units : !text.empty()) std::abort();
    const std::wstring plain = formatText(format, {}, units);
    if (plain.size() > format.size()) std::abort();
    note("text", text);
    note("plain", plain);
    return 0;
}
