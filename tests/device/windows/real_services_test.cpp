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
#include <filesystem>
#include <fstream>
#include <string>

// The code in device/ with the system's loader, XML document and registry, and with the library of
// the simulated device, which is in the folder of this program.
namespace {

constexpr wchar_t kPort[] = L"USB001";
constexpr std::size_t kBufferBytes = 65536;

namespace fs = std::filesystem;

class RealServicesTest : public testing::Test {
protected:
    void SetUp() override {
        stored::clear();
        fs::remove_all(_folder);
        setPage("DevMgmt/ConsumableConfigDyn.xml",
                "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ccdyn:ConsumableConfigDyn "
                "xmlns:ccdyn=\"urn:c\" xmlns:dd=\"urn:d\">\n <ccdyn:ConsumableInfo>\n  "
                "<dd:ProductNumber>QV-7400A</dd:ProductNumber>\n"
                "  <dd:SerialNumber> 4711 </dd:SerialNumber>\n </ccdyn:ConsumableInfo>\n"
                "</ccdyn:ConsumableConfigDyn>\n");
        setPage("DevMgmt/ProductUsageDyn.xml",
                "<pudyn:P xmlns:pudyn=\"urn:p\" xmlns:dd=\"urn:d\"><pudyn:ConsumableSubunit>"
                "<pudyn:Consumable><dd:EstimatedPagesRemaining>1200</dd:EstimatedPagesRemaining>"
                "</pudyn:Consumable></pudyn:ConsumableSubunit></pudyn:P>");
        setPage("dev/qvLoyalty.xml",
                "<loyalty><cartridge><cartModelInformation>QV-7400A</cartModelInformation>"
                "<cartLife>55</cartLife><cartSerialNumber>4711</cartSerialNumber></cartridge>"
                "<printerModel> Beamline\tK7400 MFP </printerModel></loyalty>");
        ::SetEnvironmentVariableW(L"QVSM_DEVICE_FOLDER", _folder.c_str());
    }
    void TearDown() override {
        EXPECT_EQ(logged("open"), logged("close"));
        fs::remove_all(_folder);
        stored::clear();
    }

    // Sets a page of the device or one of its switches; device_folder.h lists the switches.
    void setPage(const std::string& name, const std::string& bytes) const {
        fs::create_directories((_folder / name).parent_path());
        std::ofstream(_folder / name, std::ios::binary) << bytes;
    }

    // How many lines of the device's log begin with this word.
    [[nodiscard]] int logged(const std::string& word) const {
        std::ifstream log(_folder / "device.log");
        int count = 0;
        for (std::string line; std::getline(log, line);)
            if (line.substr(0, line.find(' ')) == word) ++count;
        return count;
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

    std::string page = "before";

private:
    fs::path _folder = fs::temp_directory_path() / L"real-services-test";
};

TEST_F(RealServicesTest, TheLibraryBesideTheProgramIsBound) {
    const TraceLines trace;
    EWSIntf device;

    EXPECT_TRUE(device.isLoaded());
    EXPECT_TRUE(trace.all().empty());
}

TEST_F(RealServicesTest, APageUpToTheBuffersSizeArrives) {
    setPage("full", std::string(kBufferBytes, 'x'));

    EXPECT_TRUE(EWSIntf().get_page(kPort, "/full", page));
    EXPECT_EQ(page, std::string(kBufferBytes, 'x'));
}

TEST_F(RealServicesTest, APageThatIsTooLargeEmptyOrMissingFails) {
    setPage("too-large", std::string(kBufferBytes + 1, 'x'));
    setPage("empty", "");

    for (const char* const path : {"/too-large", "/empty", "/missing"}) {
        page = "before";
        EXPECT_FALSE(EWSIntf().get_page(kPort, path, page)) << path;
        EXPECT_EQ(page, "") << path;
    }
    EXPECT_EQ(logged("page-too-large"), 1);
}

TEST_F(RealServicesTest, APageWhoseLengthTheDeviceOverstatesFails) {
    setPage("lie", "abc");
    setPage("claimed-length", "4294967295");

    EXPECT_FALSE(EWSIntf().get_page(kPort, "/lie", page));

    EXPECT_EQ(page, "");
    EXPECT_EQ(logged("page"), 1);
}

TEST_F(RealServicesTest, ADeviceThatIsOfflineFails) {
    setPage("full", "x");
    setPage("offline", "");

    EXPECT_FALSE(EWSIntf().get_page(kPort, "/full", page));
    EXPECT_FALSE(EWSIntf().push_button(kPort, L"go"));
    EXPECT_EQ(logged("offline"), 2);
}

TEST_F(RealServicesTest, AButtonIsPressedOrRefused) {
    EXPECT_TRUE(EWSIntf().push_button(kPort, L"cancel"));
    EXPECT_TRUE(EWSIntf().push_button(kPort, L"go"));
    EXPECT_FALSE(EWSIntf().push_button(kPort, L"self-destruct"));
    EXPECT_EQ(logged("button"), 2);
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
    setPage("offline", "");

    getConsumableInfo(kPort, product.data(), nullptr);

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

TEST_F(RealServicesTest, ALetterBeyondTheBytesLeavesItsLowByteInTheModel) {
    setPage("dev/qvLoyalty.xml", "<a><printerModel>K&#8364;</printerModel></a>");

    EXPECT_EQ(readCartridgeIdentity(kPort).printerModel, "K\xAC");
}

TEST_F(RealServicesTest, TheSitesAreReadFromTheMachinesRegistry) {
    EXPECT_EQ(makerSite(), L"https://www.corvane.example");

    configure(L"WebSite", L"http://www.test/");
    configure(L"ValidationSite", L"file:///c:/windows/notepad.exe");

    EXPECT_EQ(makerSite(), L"http://www.test");
    EXPECT_EQ(validationSite(), L"https://validate.corvane.example");
}

}  // namespace
