#include "tests/fuzz/result_notes.h"
#include "tools/printpath/scenario_parser.h"
#include "tools/printpath/scenario_words.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

// Any scenario file: it is either a scenario whose steps have the values that the table of words
// allows, or an error in one of its lines.
namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

void noteValue(const printpath::Value& value) {
    note("given", value.given ? 1 : 0);
    note("number", value.number);
    note("text", value.text);
    note("bytes", value.bytes);
}

void checkValue(const printpath::Parameter& parameter, const printpath::Value& value) {
    require(value.given || !parameter.required);
    if (!value.given) return;
    if (parameter.kind == printpath::ValueKind::Number ||
        parameter.kind == printpath::ValueKind::Control)
        require(value.number >= parameter.least && value.number <= parameter.most);
    if (parameter.kind == printpath::ValueKind::Text) require(printpath::isUtf8(value.text));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto parsed = printpath::parseScenario(text);
    if (const auto* error = std::get_if<printpath::ScenarioError>(&parsed)) {
        require(error->line >= 1 && !error->message.empty());
        note("error", error->message);
        note("line", error->line);
        return 0;
    }
    int line = 0;
    for (const printpath::Step& step : std::get<printpath::Scenario>(parsed).steps) {
        require(step.line > line && step.values.size() == step.keyword->parameters.size());
        line = step.line;
        note("step", step.written);
        for (std::size_t i = 0; i < step.values.size(); ++i) {
            checkValue(step.keyword->parameters[i], step.values[i]);
            if (kKeepsNotes) noteValue(step.values[i]);
        }
    }
    return 0;
}
