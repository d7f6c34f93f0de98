#include "device/cartridge_validation.h"
#include "device/ews_intf.h"
#include "device/web_links.h"
#include "platform/registry.h"
#include "printer/consumables.h"
#include "tests/printer/stored_values.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <array>
#include <string>

// The system's own loader, XML document and registry, and a library that stands beside this
// program.
namespace {

constexpr wchar_t kPort[] = L"USB001";

class RealServicesTest : public testing::Test {
protected:
    void SetUp() override {
        stored::clear();
        ASSERT_NE(_library, nullptr);
    }
    void TearDown() override {
        EXPECT_EQ(openDevices(), 0);
        ::FreeLibrary(_library);
        stored::clear();
    }

    [[nodiscard]] int openDevices() const {
        const auto count = reinterpret_cast<int (*)()>(
            reinterpret_cast<void*>(::GetProcAddress(_library, "StandInOpenDevices")));
        return count();
    }

    static void configure(const wchar_t* name, const std::wstring& address) {
        platform::RegistryKey key;
        ASSERT_EQ(
            key.createForWriting(platform::Hive::LocalMachine, L"SOFTWARE\\Corvane\\QVBL7400 SM"),
            0U);
        ASSERT_EQ(key.write(name, platform::ValueType::String, address.c_str(),
                            static_cast<std::uint32_t>((address.size() + 1) * sizeof(wchar_t))),
                  0U);
    }

    HMODULE _library = ::LoadLibraryW(L"rtqewsi.dll");  // keeps its counter alive between the calls
    std::string page = "before";
};

TEST_F(RealServicesTest, TheLibraryBesideTheProgramIsBound) {
    const TraceLines trace;
    EWSIntf device;

    EXPECT_TRUE(device.isLoaded());
    EXPECT_TRUE(trace.all().empty());
}

TEST_F(RealServicesTest, APageUpToTheBuffersSizeArrives) {
    EXPECT_TRUE(EWSIntf().get_page(kPort, "/full", page));
    EXPECT_EQ(page, std::string(65536, 'x'));
}

TEST_F(RealServicesTest, APageThatIsTooLargeLiesIsEmptyOrMissingFails) {
    for (const char* const path : {"/too-large", "/lie", "/empty", "/missing"}) {
        page = "before";
        EXPECT_FALSE(EWSIntf().get_page(kPort, path, page)) << path;
        EXPECT_EQ(page, "") << path;
    }
}

TEST_F(RealServicesTest, ADeviceThatIsOfflineFails) {
    EXPECT_FALSE(EWSIntf().get_page(L"offline", "/full", page));
    EXPECT_FALSE(EWSIntf().push_button(L"offline", L"go"));
}

TEST_F(RealServicesTest, AButtonIsPressedOrRefused) {
    EXPECT_TRUE(EWSIntf().push_button(kPort, L"cancel"));
    EXPECT_TRUE(EWSIntf().push_button(kPort, L"go"));
    EXPECT_FALSE(EWSIntf().push_button(kPort, L"self-destruct"));
}

TEST_F(RealServicesTest, TheSerialNumberOfTheDeviceBecomesTheCurrentCartridge) {
    queryCartridgeSerial(kPort);

    EXPECT_EQ(stored::current(), 4711U);
    EXPECT_EQ(stored::version(), 4U);
    EXPECT_EQ(stored::record().size(), 280U);
}

TEST_F(RealServicesTest, TheConsumablesAreReadThroughTheSystemsXmlDocument) {
    std::array<wchar_t, kConsumableTextUnits> product{};
    std::array<wchar_t, kConsumableTextUnits> pages{};

    getConsumableInfo(kPort, product.data(), pages.data());

    EXPECT_STREQ(product.data(), L"QV-7400A");
    EXPECT_STREQ(pages.data(), L"1200");
}

TEST_F(RealServicesTest, AnOfflineDeviceLeavesNotKnown) {
    std::array<wchar_t, kConsumableTextUnits> product{};

    getConsumableInfo(L"offline", product.data(), nullptr);

    EXPECT_STREQ(product.data(), L"Not Known");
}

TEST_F(RealServicesTest, TheCartridgeIdentityIsReadThroughTheSystemsXmlDocument) {
    const CartridgeIdentity identity = readCartridgeIdentity(kPort);

    EXPECT_EQ(identity.cartridgeModel, "QV-7400A");
    EXPECT_EQ(identity.cartridgeLife, "55");
    EXPECT_EQ(identity.cartridgeSerial, "4711");
    EXPECT_EQ(identity.cartridgeDate, "");
    EXPECT_EQ(identity.printerModel, "BeamlineK7400MFP");
}

TEST_F(RealServicesTest, TheSitesAreReadFromTheMachinesRegistry) {
    EXPECT_EQ(makerSite(), L"https://www.corvane.example");

    configure(L"WebSite", L"http://www.test/");
    configure(L"ValidationSite", L"file:///c:/windows/notepad.exe");

    EXPECT_EQ(makerSite(), L"http://www.test");
    EXPECT_EQ(validationSite(), L"https://validate.corvane.example");
}

}  // namespace
