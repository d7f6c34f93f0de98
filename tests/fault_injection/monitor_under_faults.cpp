#include "tests/fault_injection/monitor_under_faults.h"

#include "platform/simulated/world.h"
#include "printer/cartridge_store.h"
#include "strings/string_ids.h"
#include "tern/class_ids.h"
#include "tern/instance_manager.h"
#include "tern/velo_record.h"
#include "tests/support/headless_dialogs/headless_dialogs.h"
#include "tests/support/stopped_loop.h"
#include "tests/support/supply_pages.h"
#include "ui/alert_actions.h"
#include "ui/default_status_dialog.h"
#include "ui/resource_ids.h"

#include <gtest/gtest.h>

#include <new>

namespace fault_injection {

using platform::Hive;
using platform::simulated::world;

namespace {

constexpr wchar_t kKey[] = L"Software\\Corvane\\QVBL7400 SM";
constexpr wchar_t kStrings[] = L"QVK7400SMs.dll";
constexpr char kInstalled[] = "C:\\Program Files\\QV\\QV Beamline K7400 MFP Series\\";
constexpr std::uint32_t kDialogTypes = 33;

// Empties the simulated platform except for the texts, which are the same for every monitor.
void emptyPlatform() {
    world().faults.reset();
    world().registry.reset();
    world().printers.reset();
    world().desktop.reset();
    world().files.reset();
    world().device.reset();
    world().messages.reset();
    world().diagnostics.reset();
    world().time = platform::simulated::World::kStartTime;
}

void equipPlatform() {
    world().device.setPage(supply_pages::kConfigurationPath,
                           supply_pages::configuration("4711", "QV-7400A"));
    world().device.setPage(supply_pages::kUsagePath, supply_pages::usage("1200"));
    world().device.setPage("/DevMgmt/ShopForSupplies.xml", "<?xml?><supplies>black</supplies>");
    for (const char* const file : {"P7400DEF.css", "P7400SIG.GIF", "P7400OS.HTM"}) {
        world().files.put(std::string(kInstalled) + file,
                          "<html>form = document.stockline.XML_string.value;</html>");
    }
    world().printers.setDword(kPrinter, L"Status", 1);
    world().printers.setDword(kPrinter, L"AlertMask", 7);
    world().printers.setTextOf(kPrinter, L"\\", L"Printer Driver", L"K7400");
    world().registry.setText(Hive::LocalMachine, L"SOFTWARE\\Corvane\\Orrery\\", L"ApplicationPath",
                             L"C:\\Orrery\\orrery.exe");
    CartridgeRecord record;
    AddCartIfNew(record, kSerial);
}

}  // namespace

void provideTexts() {
    const platform::NativeHandle strings = world().texts.addModule(kStrings);
    for (const int id :
         {IDS_TITLE, IDS_PAPER_OUT, IDS_LOAD_PAPER, IDS_LOAD_MEDIA_DETAIL, IDS_TONER_LOW,
          IDS_SUPPLIES_NAME, IDS_FAX_DETAIL, IDS_FAX_OPEN_LINK, IDS_CONTINUE, IDS_DUPLEX_STEP_1}) {
        world().texts.add(strings, platform::simulated::kEnglish, static_cast<std::uint32_t>(id),
                          L"a text with %s that is not short");
    }
}

Monitor::Monitor(Platform start) {
    if (start == Platform::Equipped) {
        emptyPlatform();
        headless::reset();
        equipPlatform();
    }
    _manager.reset(tern::NewInstanceManager("", 0, nullptr));
    if (_manager == nullptr) throw std::bad_alloc();
    auto made = std::make_unique<WatchedListener>(_manager.get(), tern::kVeloEventGeneratorId,
                                                  tern::kVeloListenerId, nullptr,
                                                  world().texts.find(kStrings));
    if (!_manager->addComponent(made.get())) throw std::bad_alloc();
    _listener = made.release();
    if (start == Platform::AsItIs) return;
    printerIs(kPrinter);
    hasHeardAll();
    world().device.install();  // installed last, so that the steps above cannot use the device
}

Monitor::~Monitor() {
    _messages.clear();
    _manager.reset();
    headless::reset();
    emptyPlatform();
}

arbor::IPropertyHolder& Monitor::add(const arbor::Guid& type, std::uint32_t code) {
    _messages.push_back(std::make_unique<arbor::Message>(&type, code, 0));
    return *_messages.back()->getProperties();
}

void Monitor::printerIs(const wchar_t* name) {
    arbor::IPropertyHolder& properties = add(tern::kVeloEventGeneratorId, 0);
    properties.setInt(L"subcode", tern::kPrinterWide);
    properties.setWString(L"printerName", name);
    properties.setWString(L"portName", L"USB001");
}

void Monitor::cartridgeReport(std::uint32_t serial) {
    arbor::IPropertyHolder& properties = add(tern::kVeloEventGeneratorId, 2);
    properties.setInt(L"subcode", tern::kCartridgeReport);
    properties.setInt(L"blackSN", static_cast<std::int32_t>(serial));
}

void Monitor::status(std::int32_t code, std::int32_t subcode) {
    arbor::IPropertyHolder& properties = add(tern::kVeloEventGeneratorId, 2);
    properties.setInt(L"status", code);
    properties.setInt(L"subcode", subcode);
    properties.setString(L"mediaType", "Envelope, or one of the names that take memory");
}

void Monitor::documentEnd() {
    add(tern::kVeloEventGeneratorId, 0).setInt(L"subcode", tern::kDocumentEnd);
}

void Monitor::feedback(std::uint32_t action) {
    add(alert_action::kMessageType, action);
}

void Monitor::hearAll() {
    for (const auto& message : _messages)
        EXPECT_NO_THROW(_listener->notify(message.get()));
}

void Monitor::hasHeardAll() {
    hearAll();
    _messages.clear();
}

void Monitor::closeFirstAlert() {
    headless::closeBox(headless::windows().front());
}

void Monitor::pressInFirstAlert(int control) {
    headless::press(headless::windows().front(), control);
}

std::vector<int> Monitor::openTypes() {
    std::vector<int> types;
    for (const WindowHandle window : headless::windows()) {
        const auto* alert = static_cast<DefaultStatusDialog*>(headless::find(window)->dialog);
        types.push_back(alert != nullptr ? static_cast<int>(alert->dialogType()) : -1);
    }
    return types;
}

std::wstring Monitor::pressedButtons() {
    std::wstring buttons;
    for (const auto& press : world().device.presses())
        buttons += press.button;
    return buttons;
}

void Monitor::expectLivingAlerts() {
    std::size_t listed = 0;
    for (std::uint32_t type = 0; type < kDialogTypes; ++type) {
        if (_listener->alerts().findAlertDialogType(static_cast<AlertType>(type)) !=
            OpenAlerts::kNotFound)
            ++listed;
    }
    EXPECT_EQ(listed, headless::windows().size());
    for (const WindowHandle window : headless::windows()) {
        const headless::Window& seen = *headless::find(window);
        DefaultStatusDialog* const alert = _listener->alerts().findAlertDialog(seen.dialog);
        ASSERT_NE(alert, nullptr);
        EXPECT_EQ(alert->window(), window);
        EXPECT_TRUE(seen.visible);
        EXPECT_EQ(seen.receiver, alert);
        EXPECT_EQ(_listener->alerts().findAlertTypeFromDlg(alert), alert->dialogType());
    }
}

void Monitor::expectEndOnRequest() {
    world().faults.clear();
    for (const WindowHandle window : headless::windows())
        headless::closeBox(window);
    EXPECT_TRUE(headless::windows().empty());
    EXPECT_TRUE(_listener->alerts().empty());

    _messages.clear();
    documentEnd();
    hasHeardAll();

    EXPECT_TRUE(test::isLoopStopped(*_manager->getEventBroker()));
}

void Monitor::expectCleanPlatform() {
    EXPECT_EQ(world().registry.openKeys(), 0);
    EXPECT_EQ(world().printers.openPrinters(), 0);
    EXPECT_EQ(world().device.openDevices(), 0);
    EXPECT_EQ(world().device.loadedLibraries(), 0);
    const auto record = world().registry.value(Hive::CurrentUser, kKey, L"CartData");
    EXPECT_TRUE(!record || record->bytes.size() == kCartridgeRecordBytes);
}

}  // namespace fault_injection
