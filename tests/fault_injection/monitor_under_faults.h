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
inline constexpr std::uint32_t kSerial = 4711;      // what the device says of its cartridge
inline constexpr std::uint32_t kNewSerial = 47110;  // what a report says

// Texts, for all monitors that follow.
void provideTexts();

class WatchedListener : public DefaultLMSListener {
public:
    using DefaultLMSListener::DefaultLMSListener;
    [[nodiscard]] OpenAlerts& alerts() { return _alerts; }
};

// A monitor in a world of its own: a printer with its device, a cartridge, the shop's templates,
// the companion application; no window on a display. What it is to hear is prepared before anything
// fails.
class Monitor {
public:
    enum class Furniture { None, All };

    // Throws std::bad_alloc where there is no memory for all of it.
    explicit Monitor(Furniture furniture = Furniture::All);
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

    // What has happened before: the messages are heard and forgotten, as are the device's presses.
    void hasHeardAll();

    // The user closes the alert that is open first.
    void closeFirstAlert();
    // The user presses a button of it.
    void pressInFirstAlert(int control);

    [[nodiscard]] static std::vector<int> openTypes();
    [[nodiscard]] static std::wstring pressedButtons();
    [[nodiscard]] bool isStopped();

    // Every alert in the list has a window that the user can close, every window an alert in the
    // list, and the two agree on its type.
    void expectLivingAlerts();
    // Whatever happened before: with memory and platform back, the user can close what is open and
    // the end of the document ends the monitor.
    void expectEndOnRequest();
    // Nothing is open at the platform, and the cartridge memory is whole or not there.
    static void expectCleanPlatform();

private:
    arbor::IPropertyHolder& add(const arbor::Guid& type, std::uint32_t code);

    std::unique_ptr<tern::IInstanceManager> _manager;
    WatchedListener* _listener = nullptr;  // the broker's
    std::vector<std::unique_ptr<arbor::Message>> _messages;
};

}  // namespace fault_injection
