#include "device/shop_page.h"
#include "tests/fuzz/result_notes.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

// The first byte says where the input is cut into page and document. The result is compared with
// that of a second, slower implementation.
namespace {

std::string oneLine(std::string_view page) {
    std::string line;
    for (std::size_t end = 0; (end = page.find('\n')) != std::string_view::npos;) {
        std::string_view part = page.substr(0, end);
        if (!part.empty() && part.back() == '\r') part.remove_suffix(1);
        line += part;
        page.remove_prefix(end + 1);
    }
    return line + std::string(page);
}

std::string expectedPage(std::string_view page, std::string_view document) {
    std::string expected = oneLine(page);
    const std::size_t at = expected.find("document.stockline.XML_string.value");
    if (expected.size() <= 35 || at == std::string::npos) return expected;
    const std::size_t end = document.find('>');
    const std::string value(end == std::string_view::npos ? document : document.substr(end + 1));
    return expected.substr(0, at) + "'" + value + "'" + expected.substr(at + 35);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t pageBytes = input.size() * data[0] / 255;
    const std::string_view page = input.substr(0, pageBytes);
    const std::string_view document = input.substr(pageBytes);

    const std::string filled = filledShopPage(page, document);

    if (filled != expectedPage(page, document)) std::abort();
    note("page", filled);
    return 0;
}
