#pragma once

#include "tools/alert_facts/simulated_monitor.h"
#include "ui/validation_texts.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

// Questions about one alert, each answered on a monitor of its own.
namespace alert_facts {

// A report of the printer that opens an alert.
struct Report {
    std::int32_t status = 0;
    std::uint32_t subcode = tern::kDeviceStatus;
    std::string medium;  // in the tray, as the printer calls it; empty: not told
};

// What an alert shows. Texts are as the setup has them.
struct Look {
    std::map<std::string, std::wstring> roles;  // what a text is for, such as "headline"
    std::map<int, std::wstring> controls;       // what can be clicked, by control id
    std::map<int, bool> isLink;                 // of these
    std::map<int, int> pictures;                // bitmap by control id
    std::vector<std::wstring> choices;          // of the list of reminder times
    int defaultButton = 0;
};

// Nothing when the report opens no alert.
[[nodiscard]] std::optional<Look> lookOf(const Report& report, const Setup& setup = {});

using Step = std::function<void(WindowHandle)>;

// What comes about when the user does this in the alert.
[[nodiscard]] Effects effectsOf(const Report& report, const Step& step, const Setup& setup = {});

// The same for the cartridge check; whether it closes is for its window to say.
[[nodiscard]] Effects effectsOf(CheckAction action);

struct Rules {
    bool again;               // it comes a second time for the same cartridge once it was closed
    bool againForNew;         // the same with a new cartridge
    bool twice;               // a second one opens while the first one is open
    bool withoutCartridge;    // it comes while the cartridge is unknown
    bool staysAfterDocument;  // it is open when the document has ended
    std::int64_t restHours;   // it rests for so long from its opening on
};
[[nodiscard]] Rules rulesOf(const Report& report);

// Whether the alert comes for a cartridge that has had the other one before.
[[nodiscard]] bool comesAfter(const Report& report, const Report& before);

// The bits of AlertMask without which the alert does not come; throws std::runtime_error when a
// mask of no class at all lets it through.
[[nodiscard]] std::uint32_t maskBitsOf(const Report& report);
// The class of a bit: "errors", "information" or "warnings".
[[nodiscard]] std::string maskClassOf(std::uint32_t bit);

}  // namespace alert_facts
