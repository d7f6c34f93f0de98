#pragma once

#include "arbor/message.h"
#include "monitor/default_lms_listener.h"
#include "tern/i_instance_manager.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace fault_injection {

inline constexpr wchar_t kPrinter[] = L"K7400 of the first floor";
inline constexpr std::uint32_t kSerial = 4711;      // the cartridge that the device reports
inline constexpr std::uint32_t kNewSerial = 47110;  // the cartridge in a cartridge report

// Adds the texts, once for all monitors that are made afterwards.
void provideTexts();

class WatchedListener : public DefaultLMSListener {
public:
    using DefaultLMSListener::DefaultLMSListener;
    [[nodiscard]] OpenAlerts& alerts() { return _alerts; }
};

// A monitor on a simulated platform of its own, which has a printer with its device, a cartridge,
// the templates of the shop and the companion application; the windows are stand-ins. The messages
// are made before any fault is injected, so that only the monitor itself meets the faults.
class Monitor {
public:
    enum class Platform { AsItIs, Equipped };

    // Throws std::bad_alloc where there is no memory for all of it.
    explicit Monitor(Platform start = Platform::Equipped);
    ~Monitor();
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

    // Each adds a message that hearAll() delivers.
    void printerIs(const wchar_t* name);
    void cartridgeReport(std::uint32_t serial);
    void status(std::int32_t code, std::int32_t subcode = 3);
    void documentEnd();
    void feedback(std::uint32_t action);
    void hearAll();

    // Delivers the messages without faults and forgets them, and the presses of the device's
    // buttons as well: the state before the scene begins.
    void hasHeardAll();

    // The user closes the alert that opened first.
    void closeFirstAlert();
    // The user presses a button of the alert that opened first.
    void pressInFirstAlert(int control);

    [[nodiscard]] static std::vector<int> openTypes();
    [[nodiscard]] static std::wstring pressedButtons();

    // Every alert in the list has a window that the user can close, every window belongs to an
    // alert in the list, and both have the same type.
    void expectLivingAlerts();
    // Whatever happened under faults: without them the user can now close every open alert, and the
    // end of the document ends the monitor.
    void expectEndOnRequest();
    // No handle of the platform is open, and the cartridge record is whole or absent.
    static void expectCleanPlatform();

private:
    arbor::IPropertyHolder& add(const arbor::Guid& type, std::uint32_t code);

    std::unique_ptr<tern::IInstanceManager> _manager;
    WatchedListener* _listener = nullptr;  // owned by the broker
    std::vector<std::unique_ptr<arbor::Message>> _messages;
};

}  // namespace fault_injection
