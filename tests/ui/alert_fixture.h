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

// The contents of one action message of an alert.
struct Told {
    std::uint32_t code;
    void* dialog;
    void* window;
    std::int32_t wParam;
    std::int32_t lParam;
};

// Opens alerts without real windows. The simulated system has every text of the strings library and
// a device that reports its cartridge. A listener records the action messages.
class AlertFixture : public testing::Test {
protected:
    static constexpr wchar_t kPrinter[] = L"Laser in the hall";

    AlertFixture();
    ~AlertFixture() override;

    // Fills `description` as the listener does and opens the alert.
    void open(int type, int status);
    // Opens the alert of `description` as it is, for tests that have changed it.
    void openDescribed();
    void describe(int type, int status);

    [[nodiscard]] WindowHandle window() const { return alert->window(); }
    [[nodiscard]] headless::Control& control(int id) { return headless::control(window(), id); }
    [[nodiscard]] headless::Window& frame() { return *headless::find(window()); }
    [[nodiscard]] std::vector<std::uint32_t> codes() const;

    // A text of the library in English or in another language.
    [[nodiscard]] static std::wstring text(unsigned id, unsigned short language = 1033);
    // Replaces a text of the library, or adds one.
    static void replaceText(unsigned id, const std::wstring& text);

    void useFamilyPrinter();
    static void snoozedCartridge(std::uint32_t serial);

    void* strings;
    arbor::PropertyHolder description;
    tern::EventBroker broker;
    std::vector<Told> told;
    std::function<void(const Told&)> onTold;  // runs while the alert publishes an action
    std::unique_ptr<DefaultStatusDialog> alert;
};
