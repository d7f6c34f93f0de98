#pragma once

#include "tests/support/test_components.h"
#include "tests/ui/windows/alert_desktop.h"
#include "ui/alert_window.h"
#include "ui/windows/display_settings.h"
#include "ui/windows/gdi_handles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// Opens alerts with real windows and records the codes of their action messages.
class AlertWindowTest : public testing::Test {
protected:
    using Codes = std::vector<std::uint32_t>;

    AlertWindowTest() : broker(nullptr) {
        broker.addComponent(new test::ListenerComponent([this](arbor::IMessage& message) {
            codes.push_back(message.getCode());
            const std::function<void()> action = onTold;
            if (action) action();
            return true;
        }));
    }
    ~AlertWindowTest() override {
        setForegroundFunction(nullptr);
        setHighContrastQuery(nullptr);
    }

    void open(int type, int status = 0) {
        alert = alert_desktop::openAlert(type, status, &broker);
        ASSERT_NE(alert, nullptr);
        codes.clear();
        alert_desktop::pump();
    }
    // Destroys the window and then the object at the next action, as the listener does.
    void endWithTheNextAction() {
        onTold = [this] {
            destroyAlertWindow(alert->window());
            alert.reset();
        };
    }

    [[nodiscard]] HWND control(int id) const { return ::GetDlgItem(alert->window(), id); }
    [[nodiscard]] RECT placeOf(int id) const {
        RECT place{};
        ::GetWindowRect(control(id), &place);
        ::MapWindowPoints(nullptr, alert->window(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    [[nodiscard]] std::wstring textOf(int id) const {
        wchar_t text[512] = {};
        ::GetWindowTextW(control(id), text, 512);
        return text;
    }
    // Gives a control the focus and posts a key press to it.
    void pressKey(int id, WPARAM key) {
        ::SetFocus(control(id));
        ::PostMessageW(control(id), WM_KEYDOWN, key, 1);
        alert_desktop::pump();
    }
    void typeLetter(HWND target, wchar_t letter) {
        ::PostMessageW(target, WM_CHAR, letter, 1);
        alert_desktop::pump();
    }
    [[nodiscard]] int focused() const { return ::GetDlgCtrlID(::GetFocus()); }
    // The colour of a pixel of the window's client area on the screen.
    [[nodiscard]] COLORREF pixel(int x, int y) const {
        alert_desktop::pumpFor(50);
        const WindowDc dc(alert->window());
        return ::GetPixel(dc.get(), x, y);
    }

    tern::EventBroker broker;
    Codes codes;
    std::function<void()> onTold;
    std::unique_ptr<DefaultStatusDialog> alert;
};
