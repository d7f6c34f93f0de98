#pragma once

#include "arbor/property_holder.h"
#include "tern/event_broker.h"
#include "tests/support/headless_dialogs/headless_dialogs.h"
#include "ui/default_status_dialog.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// What an action message of an alert carried.
struct Told {
    std::uint32_t code;
    void* dialog;
    void* window;
    std::int32_t wParam;
    std::int32_t lParam;
};

// Alerts on a desktop without windows, in a world with every text of the strings library, a device
// that knows its cartridge, and a listener that hears the actions.
class AlertFixture : public testing::Test {
protected:
    static constexpr wchar_t kPrinter[] = L"Laser in the hall";

    AlertFixture();
    ~AlertFixture() override;

    // Fills `description` as the listener does and opens the alert.
    void open(int type, int status);
    // The same after `description` was changed by the test.
    void openDescribed();
    void describe(int type, int status);

    [[nodiscard]] WindowHandle window() const { return alert->window(); }
    [[nodiscard]] headless::Control& control(int id) { return headless::control(window(), id); }
    [[nodiscard]] headless::Window& frame() { return *headless::find(window()); }
    [[nodiscard]] std::vector<std::uint32_t> codes() const;

    // The English text, or that of another language.
    [[nodiscard]] static std::wstring text(unsigned id, unsigned short language = 1033);
    // A text of the library with another one in it.
    static void replaceText(unsigned id, const std::wstring& text);

    void useFamilyPrinter();
    static void snoozedCartridge(std::uint32_t serial);

    void* strings;
    arbor::PropertyHolder description;
    tern::EventBroker broker;
    std::vector<Told> told;
    std::function<void(const Told&)> onTold;  // runs while the alert tells
    std::unique_ptr<DefaultStatusDialog> alert;
};
