#include "tests/ui/alert_fixture.h"

#include "platform/simulated/world.h"
#include "printer/cartridge_store.h"
#include "printer/media_types.h"
#include "tests/support/clean_platform.h"
#include "tests/support/strings_table.h"
#include "tests/support/supply_pages.h"
#include "tests/support/test_components.h"
#include "ui/alert_actions.h"
#include "ui/alert_factory.h"

using platform::simulated::world;

namespace {

constexpr wchar_t kLibrary[] = L"QVK7400SMs.dll";
constexpr int kPlainPaper = 301;

// The languages in which tests look at alerts. With all of them, each test would begin by copying
// thousands of texts.
bool isShown(unsigned short language) {
    constexpr unsigned short kEnglish = 1033, kGerman = 1031, kHebrew = 1037, kChinese = 2052;
    return language == kEnglish || language == kGerman || language == kHebrew ||
           language == kChinese;
}

}  // namespace

AlertFixture::AlertFixture() : broker(nullptr) {
    cleanPlatform();
    headless::reset();
    setCurrentMediaType(kPlainPaper);
    strings = world().texts.addModule(kLibrary);
    for (unsigned i = 0; i < kStringRowCount; ++i) {
        const StringRow& row = kStringRows[i];
        if (!isShown(row.language)) continue;
        world().texts.add(strings, row.language, row.id, row.text);
    }
    world().device.install();
    world().device.setPage(supply_pages::kConfigurationPath,
                           supply_pages::configuration("", "QV-7400A"));
    world().device.setPage(supply_pages::kUsagePath, supply_pages::usage("1200"));
    broker.addComponent(new test::ListenerComponent([this](arbor::IMessage& message) {
        EXPECT_TRUE(*message.getType() == alert_action::kMessageType);
        const arbor::IPropertyHolder& properties = *message.getProperties();
        told.push_back({message.getCode(), properties.getPointer("statusdialog", nullptr),
                        properties.getPointer("statusdialoghwnd", nullptr),
                        properties.getInt("wparam", -1), properties.getInt("lparam", -1)});
        if (onTold) onTold(Told(told.back()));
        return true;
    }));
}

AlertFixture::~AlertFixture() {
    alert.reset();
    headless::reset();
    cleanPlatform();
}

void AlertFixture::describe(int type, int status) {
    description.setPointer(L"hinstance", this);
    description.setPointer(L"hSinstance", strings);
    description.setPointer(L"eventBroker", &broker);
    description.setWString(L"idsPrinter", kPrinter);
    description.setWString(L"idsPort", L"USB001");
    description.setInt(L"status", status);
    description.setInt(L"subcode", 0);
    description.setInt(L"dialog type", type);
}

void AlertFixture::openDescribed() {
    alert = createAlertDialog(description);
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(alert->create());
}

void AlertFixture::open(int type, int status) {
    describe(type, status);
    openDescribed();
}

std::vector<std::uint32_t> AlertFixture::codes() const {
    std::vector<std::uint32_t> all;
    for (const Told& one : told)
        all.push_back(one.code);
    return all;
}

std::wstring AlertFixture::text(unsigned id, unsigned short language) {
    for (unsigned i = 0; i < kStringRowCount; ++i) {
        const StringRow& row = kStringRows[i];
        if (row.id == id && row.language == language) return row.text;
    }
    ADD_FAILURE() << "no text " << id;
    return {};
}

void AlertFixture::replaceText(unsigned id, const std::wstring& text) {
    world().texts.add(world().texts.find(kLibrary), platform::simulated::kEnglish, id, text);
}

void AlertFixture::useFamilyPrinter() {
    world().printers.setTextOf(kPrinter, L"\\", L"Printer Driver", L"Beamline K7400 PCL");
}

void AlertFixture::snoozedCartridge(std::uint32_t serial) {
    CartridgeRecord record;
    AddCartIfNew(record, serial);
}
