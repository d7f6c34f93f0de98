#include "platform/simulated/device.h"

#include "platform/dynamic_library.h"
#include "platform/simulated/world.h"

#include <gtest/gtest.h>
#include <array>
#include <memory>
#include <string>

namespace {

using platform::simulated::Call;
using platform::simulated::world;

// Calls the functions of the device library through their addresses, as the product does.
class DeviceTest : public testing::Test {
protected:
    using OpenPort = void* (*)(const wchar_t*);
    using Close = int (*)(void*);
    using GetPage = int (*)(void*, const char*, void*, char*, std::uint32_t, std::uint32_t*);
    using PushButton = int (*)(void*, const wchar_t*);

    void SetUp() override {
        world().reset();
        world().device.install();
        world().device.setPage("/page.xml", "<page/>");
        _library = std::make_unique<platform::DynamicLibrary>(L"RTQEWSI.dll");
        ASSERT_NE(_library->handle(), nullptr);
    }
    void TearDown() override {
        _library.reset();
        EXPECT_EQ(world().device.loadedLibraries(), 0);
        world().reset();
    }

    template <typename Function>
    [[nodiscard]] Function function(const char* name) const {
        return reinterpret_cast<Function>(_library->function(name));
    }
    [[nodiscard]] void* open() const { return function<OpenPort>("OpenEWSPort_W")(L"QV1"); }
    void close(void* device) const { function<Close>("CloseEWS")(device); }
    int getPage(void* device, const char* path) {
        return function<GetPage>("GetPage")(device, path, nullptr, _buffer.data(),
                                            static_cast<std::uint32_t>(_buffer.size()), &_received);
    }

    std::unique_ptr<platform::DynamicLibrary> _library;
    std::array<char, 16> _buffer{};
    std::uint32_t _received = 0;
};

TEST_F(DeviceTest, AReservedArgumentIsRefused) {
    void* const device = open();
    char any = 0;

    EXPECT_EQ(
        function<GetPage>("GetPage")(device, "/page.xml", &any, _buffer.data(), 16, &_received), 0);

    close(device);
}

TEST_F(DeviceTest, EveryFunctionOfTheLibraryIsThere) {
    for (const char* const name :
         {"OpenEWSPort_W", "OpenEWSPort_A", "OpenEWS_W", "OpenEWS_A", "CloseEWS", "EWSLastError",
          "WriteEWS", "ReadEWS", "WriteReadEWS", "GetPage", "PushLedmButtonW"}) {
        EXPECT_NE(_library->function(name), nullptr) << name;
    }
}

TEST_F(DeviceTest, AWithheldFunctionIsMissing) {
    world().device.withhold("ReadEWS");

    EXPECT_EQ(_library->function("ReadEWS"), nullptr);
    EXPECT_NE(_library->function("WriteEWS"), nullptr);
}

TEST_F(DeviceTest, APageIsServed) {
    void* const device = open();

    EXPECT_NE(getPage(device, "/page.xml"), 0);
    EXPECT_EQ(std::string(_buffer.data(), _received), "<page/>");
    EXPECT_EQ(getPage(device, "/missing.xml"), 0);
    close(device);
}

TEST_F(DeviceTest, APageThatDoesNotFitSaysHowLongItIs) {
    world().device.setPage("/long.xml", std::string(100, 'x'));
    void* const device = open();

    EXPECT_NE(getPage(device, "/long.xml"), 0);
    EXPECT_EQ(std::string(_buffer.data(), _buffer.size()), std::string(_buffer.size(), 'x'));
    EXPECT_EQ(_received, 100U);
    close(device);
}

TEST_F(DeviceTest, APageMayLieAboutItsLength) {
    world().device.claimLength(0xFFFFFFFF);
    void* const device = open();

    EXPECT_NE(getPage(device, "/page.xml"), 0);
    EXPECT_EQ(_received, 0xFFFFFFFF);
    close(device);
}

TEST_F(DeviceTest, PressesAreRememberedWithTheirPort) {
    void* const device = open();

    EXPECT_NE(function<PushButton>("PushLedmButtonW")(device, L"cancel"), 0);

    ASSERT_EQ(world().device.presses().size(), 1U);
    EXPECT_EQ(world().device.presses()[0].port, L"QV1");
    EXPECT_EQ(world().device.presses()[0].button, L"cancel");
    close(device);
}

TEST_F(DeviceTest, OpenDevicesAreCounted) {
    void* const device = open();
    EXPECT_EQ(world().device.openDevices(), 1);

    close(device);

    EXPECT_EQ(world().device.openDevices(), 0);
    EXPECT_EQ(world().device.openedPorts(), std::vector<std::wstring>{L"QV1"});
}

TEST_F(DeviceTest, EveryFunctionCanFail) {
    void* const device = open();
    const auto press = function<PushButton>("PushLedmButtonW");
    const auto openAgain = function<OpenPort>("OpenEWSPort_W");
    const auto page = function<GetPage>("GetPage");
    for (const Call call : {Call::DeviceOpen, Call::DevicePage, Call::DeviceButton,
                            Call::FunctionLookup, Call::LibraryLoad}) {
        world().faults.add({call, 1, true});
    }

    EXPECT_EQ(openAgain(L"QV1"), nullptr);
    EXPECT_EQ(page(device, "/page.xml", nullptr, _buffer.data(), 1, &_received), 0);
    EXPECT_EQ(press(device, L"go"), 0);
    EXPECT_EQ(_library->function("GetPage"), nullptr);
    EXPECT_EQ(platform::DynamicLibrary(L"rtqewsi.dll").handle(), nullptr);
    world().faults.clear();
    close(device);
}

}  // namespace
