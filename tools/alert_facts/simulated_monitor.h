#pragma once

#include "platform/resource_text.h"
#include "tern/velo_record.h"
#include "tests/support/headless_dialogs/headless_dialogs.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class DefaultLMSListener;
namespace arbor {
class IPropertyHolder;
}
namespace tern {
class IInstanceManager;
}

namespace alert_facts {

using TextsById = std::map<std::uint32_t, std::wstring>;

// The texts of the strings library in one language.
[[nodiscard]] TextsById textsOf(platform::LanguageId language);
// A language of its own in which each text is its id, "#265". What a window shows in it tells which
// texts it is made of.
[[nodiscard]] const TextsById& idsAsTexts();
// The id of such a text, 0 for any other.
[[nodiscard]] int idOf(const std::wstring& text);

// The system, printer and cartridge with which an alert is tried.
struct Setup {
    const TextsById* texts = &idsAsTexts();
    bool familyPrinter = true;
    platform::LanguageId systemLanguage = 0x0409;
    std::uint32_t alertMask = 7;
    bool silentPrinter = false;  // its data value "Status" is 0
    bool knownCartridge = true;
};

// All that a step of the user may bring about, beside the change of the alert itself.
struct Effects {
    bool closes = false;
    bool endsMonitor = false;
    bool opensShop = false;
    bool startsCompanion = false;
    bool opensCheck = false;
    std::vector<std::wstring> addresses;       // opened in the browser
    std::vector<std::wstring> printerButtons;  // pressed on the printer
    std::vector<headless::Message> messages;
    std::array<std::int64_t, 3> rest{};  // hours for which the snoozes last, by slot
};

// The monitor's own decisions, handlers and alerts on the simulated platform, without windows. Only
// one may exist at a time; it begins with an empty platform.
class SimulatedMonitor {
public:
    static constexpr wchar_t kPrinter[] = L"Beamline K7400";

    explicit SimulatedMonitor(const Setup& setup = {});
    ~SimulatedMonitor();
    SimulatedMonitor(const SimulatedMonitor&) = delete;
    SimulatedMonitor& operator=(const SimulatedMonitor&) = delete;

    // The printer reports a status; the window that it opens, null when it opens none.
    WindowHandle report(std::int32_t status, std::uint32_t subcode = tern::kDeviceStatus);
    void loadMedium(const std::string& name);
    void insertNewCartridge();
    void endDocument();
    // What has come about since the monitor began. `window` is the alert that is asked about.
    [[nodiscard]] Effects effects(WindowHandle window);

private:
    using Fill = std::function<void(arbor::IPropertyHolder&)>;
    void send(tern::RecordClass recordClass, std::uint32_t subcode, const Fill& fill = {});

    std::unique_ptr<tern::IInstanceManager> _manager;
    DefaultLMSListener* _listener = nullptr;  // owned by the broker
    std::uint32_t _serial = 740021;
};

}  // namespace alert_facts
