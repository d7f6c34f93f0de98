#pragma once

#include "ui/window_types.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace arbor {
class IMessage;
class IPropertyHolder;
}  // namespace arbor
namespace tern {
class EventBroker;
}

inline constexpr int kSnoozeChoices = 8;  // after the prompt, which is choice 0

// What every alert has: its texts and pictures, its window, and the messages that take the user's
// actions to the event broker. Everything happens on the main thread.
//
// Publishing an action may end in the destruction of this object and of its window, while its
// procedure is on the stack: after notify() nothing may touch either.
class StatusDialog {
public:
    StatusDialog(const StatusDialog&) = delete;
    StatusDialog& operator=(const StatusDialog&) = delete;

    // Handles a message of the window; true (1) when it needs nothing more.
    virtual DialogResult dlgProc(WindowHandle window, WindowMessage message, MessageWord wParam,
                                 MessageLong lParam);

    // Where the window opens, in pixels of 96 dots per inch. It moves in to be seen whole.
    void setPosition(int x, int y) noexcept;
    // Makes the window, fills it and shows it in front. False: there is no window, also where it
    // could be made but not be filled, and the owner drops the object; it never destroys itself, so
    // no owner is left with a dangling pointer.
    bool create();
    // Null before create(). The window lives until destroyAlertWindow() or this object's end; when
    // the user closes it, it is hidden but still there.
    [[nodiscard]] WindowHandle window() const noexcept { return _window; }
    // For the window itself, which tells when it begins and ends.
    void setWindow(WindowHandle window) noexcept { _window = window; }

    // Publishes an action (see ui/alert_actions.h); does nothing without an event broker. An action
    // for which there is no memory throws std::bad_alloc and was not sent.
    void notify(std::uint32_t code);
    void notify(std::uint32_t code, MessageWord wParam, MessageLong lParam, WindowHandle window);

protected:
    // Reads the description; nothing of it is kept. With `createNow` the window is made at once.
    StatusDialog(const arbor::IPropertyHolder& description, bool createNow);
    // Destroys the window if it is still there. Not virtual: owners hold the final class.
    ~StatusDialog();

    // The rules of the messages above, apart from the procedure that routes them.
    void initialize(WindowHandle window);
    // The window stays as it is when there is no memory to tell of its end.
    void close(WindowHandle window);
    void command(WindowHandle window, MessageWord wParam, MessageLong lParam);

    // The text `id` of the strings library, empty for 0.
    [[nodiscard]] std::wstring text(std::uint32_t id) const;
    // The text whose id stands under `key`.
    [[nodiscard]] std::wstring textOf(const arbor::IPropertyHolder& description,
                                      const wchar_t* key) const;

    void* _module;        // "hinstance": templates, pictures, icons; not owned
    void* _stringModule;  // "hSinstance": texts; not owned
    WindowHandle _window = nullptr;
    int _pictureId;   // 0: no picture
    int _iconId;      // 0: no icon
    int _templateId;  // of the dialog
    int _x;
    int _y;
    std::wstring _printerText;  // empty unless the printer's name starts with a number
    std::wstring _message;
    std::wstring _title;
    std::wstring _headline;
    std::wstring _okCaption;  // "buttonMessage": empty unless a producer sets one
    std::wstring _shop;
    std::wstring _returns;
    std::wstring _fraud;
    std::wstring _faxReceived;
    std::wstring _faxReceivedOrrery;  // the same where the companion application can show it
    std::wstring _detail;
    std::wstring _snoozePrompt;
    std::wstring _snoozeLabel;
    std::array<std::wstring, kSnoozeChoices> _snoozeChoices;
    tern::EventBroker* _broker;  // not owned; null: actions are dropped

private:
    // Null without an event broker; std::bad_alloc when it cannot be told whole.
    [[nodiscard]] std::shared_ptr<arbor::IMessage> actionMessage(std::uint32_t code,
                                                                 MessageWord wParam,
                                                                 MessageLong lParam,
                                                                 WindowHandle window);
    void publish(const std::shared_ptr<arbor::IMessage>& action);
    [[nodiscard]] std::wstring messageText(const arbor::IPropertyHolder& description) const;
    void announceExtras(WindowHandle window);
};
