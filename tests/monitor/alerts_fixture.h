#pragma once

#include "printer/cartridge_store.h"
#include "tests/monitor/listener_fixture.h"
#include "tests/support/headless_dialogs/headless_dialogs.h"
#include "tests/support/stopped_loop.h"
#include "ui/default_status_dialog.h"
#include "ui/resource_ids.h"

#include <algorithm>
#include <vector>

// The listener with its real handlers. The alerts are real too; their windows are stand-ins that
// record what would be shown.
class AlertsFixture : public ListenerFixture<DefaultLMSListener> {
protected:
    static constexpr platform::UnixSeconds kNow = 1'700'000'000;
    static constexpr platform::UnixSeconds kHour = 3600;

    AlertsFixture() {
        headless::reset();
        world().time = kNow;
    }

    ~AlertsFixture() override {
        manager.reset();
        headless::reset();
    }

    // Types of the open alerts in the order of opening.
    static std::vector<int> openTypes() {
        std::vector<int> types;
        for (const WindowHandle window : headless::windows())
            types.push_back(typeOf(window));
        return types;
    }

    static int typeOf(WindowHandle window) {
        const auto* dialog = static_cast<DefaultStatusDialog*>(headless::find(window)->dialog);
        return static_cast<int>(dialog->dialogType());
    }

    static WindowHandle windowOf(int dialogType) {
        for (const WindowHandle window : headless::windows()) {
            if (typeOf(window) == dialogType) return window;
        }
        return nullptr;
    }

    void cartridgeIs(std::uint32_t serial) {
        CartridgeRecord record;
        AddCartIfNew(record, serial);
    }

    static platform::UnixSeconds snoozedUntil(std::uint32_t serial, SnoozeSlot slot) {
        CartridgeRecord record;
        GetCartData(record);
        const std::size_t entry = record.find(serial);
        return entry == CartridgeRecord::npos ? -1 : record.snooze(entry, slot);
    }

    static void snoozeUntil(std::uint32_t serial, SnoozeSlot slot, platform::UnixSeconds until) {
        CartridgeRecord record;
        GetCartData(record);
        record.setSnooze(record.find(serial), slot, until);
        world().registry.set(
            platform::Hive::CurrentUser, L"Software\\Corvane\\QVBL7400 SM", L"CartData",
            platform::ValueType::Binary,
            {reinterpret_cast<const char*>(record.bytes()), kCartridgeRecordBytes});
    }

    bool channelIsStopped() { return test::isLoopStopped(*manager->getEventBroker()); }
};
