#pragma once

#include "arbor/message.h"
#include "monitor/default_lms_listener.h"
#include "platform/simulated/world.h"
#include "tern/class_ids.h"
#include "tern/instance_manager.h"
#include "tern/velo_record.h"
#include "ui/alert_actions.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

// Records which handler was called instead of opening an alert.
class RecordingListener : public DefaultLMSListener {
public:
    using DefaultLMSListener::DefaultLMSListener;

    void showDialogType0() override { call("0"); }
    void showMediaAlert(int group) override { call("media " + std::to_string(group)); }
    void showDialogType2() override { call("2"); }
    void showDialogType3() override { call("3"); }
    void showTonerLow(int veryLow) override { call("toner low " + std::to_string(veryLow)); }
    void showTonerOut() override { call("toner out"); }
    void showDialogType5() override { call("5"); }
    void showDialogType6() override { call("6"); }
    void showDialogType7() override { call("7"); }
    void showDialogType8() override { call("8"); }
    void showDialogType29() override { call("29"); }
    void showDialogType9() override { call("9"); }
    void showDialogType10() override { call("10"); }
    void showDialogType11() override { call("11"); }
    void showDialogType14() override { call("14"); }
    void showDialogType15() override { call("15"); }
    void showDialogType16() override { call("16"); }
    void showDialogType17() override { call("17"); }
    void showDialogType18() override { call("18"); }
    void showDialogType12() override { call("12"); }
    void showDialogType19() override { call("19"); }
    void showDialogType20() override { call("20"); }
    void showDialogType21() override { call("21"); }
    void showDialogType23() override { call("23"); }
    void showDialogType22() override { call("22"); }
    void showDialogType24() override { call("24"); }
    void setCartData() override { call("cart data"); }
    void showDialogType26() override { call("26"); }
    void showDialogType27() override { call("27"); }
    void showGenericStatus(std::int32_t status) override {
        call("generic " + std::to_string(status));
    }
    void configurePrinter(arbor::IMessage* message) override {
        if (_configurationIsReplaced) {
            call("configure");
        } else {
            DefaultLMSListener::configurePrinter(message);
        }
    }
    void onEndDocument() override { call("end of document"); }
    bool launchCompanion() override {
        call("companion");
        return true;
    }
    void showDialogType32() override { call("32"); }

    // From now on configurePrinter() is only recorded and reads nothing from the printer.
    void replaceConfiguration() { _configurationIsReplaced = true; }

    [[nodiscard]] std::vector<std::string> takeCalls() { return std::exchange(_calls, {}); }

private:
    void call(std::string name) { _calls.push_back(std::move(name)); }

    std::vector<std::string> _calls;
    bool _configurationIsReplaced = false;
};

// A listener in a framework of its own on the simulated platform, and functions that send it the
// messages of the status channel and of the alerts.
template <typename Listener>
class ListenerFixture : public testing::Test {
protected:
    ListenerFixture() {
        world().reset();
        world().diagnostics.keepTrace();
        manager.reset(tern::NewInstanceManager("", 0, nullptr));
        auto made = std::make_unique<Listener>(manager.get(), tern::kVeloEventGeneratorId,
                                               tern::kVeloListenerId, nullptr, nullptr);
        listener = made.get();
        if (manager->addComponent(listener)) static_cast<void>(made.release());
    }

    ~ListenerFixture() override {
        manager.reset();
        world().reset();
    }

    static platform::simulated::World& world() { return platform::simulated::world(); }

    static bool wasTraced(const std::string& line) { return world().diagnostics.hasTraced(line); }

    // The buttons of the device that were pressed, in order.
    static std::vector<std::wstring> pressed() {
        std::vector<std::wstring> buttons;
        for (const auto& press : world().device.presses())
            buttons.push_back(press.button);
        return buttons;
    }

    bool status(std::int32_t code, std::int32_t subcode = tern::kDeviceStatus) {
        arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);
        message.getProperties()->setInt(L"status", code);
        message.getProperties()->setInt(L"subcode", subcode);
        return listener->notify(&message);
    }

    bool cartridgeReport(std::int32_t serial, std::int32_t code = 0) {
        arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);
        message.getProperties()->setInt(L"status", code);
        message.getProperties()->setInt(L"subcode", tern::kCartridgeReport);
        message.getProperties()->setInt(L"blackSN", serial);
        return listener->notify(&message);
    }

    bool job(std::int32_t subcode) {
        arbor::Message message(&tern::kVeloEventGeneratorId, 0, 0);
        message.getProperties()->setInt(L"subcode", subcode);
        return listener->notify(&message);
    }

    bool printerIs(const wchar_t* name, const wchar_t* port = L"USB001") {
        arbor::Message message(&tern::kVeloEventGeneratorId, 0, 0);
        message.getProperties()->setInt(L"subcode", tern::kPrinterWide);
        message.getProperties()->setWString(L"printerName", name);
        message.getProperties()->setWString(L"portName", port);
        return listener->notify(&message);
    }

    bool feedback(std::uint32_t action, void* dialog = nullptr) {
        arbor::Message message(&alert_action::kMessageType, action, 0);
        if (dialog != nullptr) message.getProperties()->setPointer(L"statusdialog", dialog);
        return listener->notify(&message);
    }

    std::unique_ptr<tern::IInstanceManager> manager;
    Listener* listener = nullptr;  // owned by the broker
};
