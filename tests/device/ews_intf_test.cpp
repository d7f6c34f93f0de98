#include "device/ews_intf.h"

#include "platform/simulated/world.h"
#include "tests/support/clean_platform.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <array>
#include <regex>
#include <string>
#include <vector>

namespace {

using platform::simulated::Call;
using platform::simulated::world;
using Lines = std::vector<std::string>;

constexpr wchar_t kPort[] = L"USB001";
constexpr char kPath[] = "/DevMgmt/ConsumableConfigDyn.xml";

constexpr std::array<const char*, 9> kEntryPoints = {
    "OpenEWSPort_W", "OpenEWSPort_A", "OpenEWS_W", "OpenEWS_A",   "CloseEWS",
    "EWSLastError",  "WriteEWS",      "ReadEWS",   "WriteReadEWS"};

constexpr char kNoHandleForPage[] =
    "EWSIntf::get_page: Attempting to lookup GetPage with no DLL handle\n";
constexpr char kNoPage[] = "EWSIntf::get_page: Function not found in DLL: GetPage\n";
constexpr char kNoHandleForButton[] =
    "EWSIntf::push_button: Attempting to lookup PushLedmButtonW with no DLL handle\n";
constexpr char kNoButton[] = "EWSIntf::push_button: Function not found in DLL: PushLedmButtonW\n";

class EwsIntfTest : public testing::Test {
protected:
    void SetUp() override { cleanPlatform(); }
    void TearDown() override {
        EXPECT_EQ(world().device.openDevices(), 0);
        EXPECT_EQ(world().device.loadedLibraries(), 0);
        cleanPlatform();
    }

    static Lines debuggerTexts() { return world().diagnostics.debuggerTexts(); }

    std::string page = "what was there before";
    TraceLines trace;
};

TEST_F(EwsIntfTest, ACompleteLibraryIsLoadedWithoutAWord) {
    world().device.install();
    EWSIntf device;

    EXPECT_TRUE(device.isLoaded());

    EXPECT_EQ(device.lastError(), 0U);
    EXPECT_TRUE(trace.all().empty());
}

TEST_F(EwsIntfTest, TheEntryPointsAreLookedUpOnceAtConstruction) {
    world().device.install();
    EWSIntf device;

    EXPECT_TRUE(device.isLoaded());
    EXPECT_TRUE(device.isLoaded());

    EXPECT_EQ(world().faults.calls(Call::LibraryLoad), 1);
    EXPECT_EQ(world().faults.calls(Call::FunctionLookup), 9);
}

TEST_F(EwsIntfTest, TheEntryPointsAreLookedUpInTheOrderOfTheDump) {
    world().device.install();

    const EWSIntf device;

    EXPECT_EQ(world().device.lookedUp(), Lines(kEntryPoints.begin(), kEntryPoints.end()));
}

TEST_F(EwsIntfTest, AMissingLibraryDumpsZeroesAndSetsError126) {
    EWSIntf device;

    EXPECT_FALSE(device.isLoaded());

    EXPECT_EQ(device.lastError(), 126U);
    EXPECT_EQ(trace.all(), (Lines{
                               "            hMod = 00000000",
                               "pfnOpenEWSPort_W = 00000000",
                               "pfnOpenEWSPort_A = 00000000",
                               "    pfnOpenEWS_W = 00000000",
                               "    pfnOpenEWS_A = 00000000",
                               "     pfnCloseEWS = 00000000",
                               " pfnEWSLastError = 00000000",
                               "     pfnWriteEWS = 00000000",
                               "      pfnReadEWS = 00000000",
                               " pfnWriteReadEWS = 00000000",
                           }));
}

TEST_F(EwsIntfTest, EachMissingEntryPointShowsAsZeroInTheDumpAndSetsError127) {
    for (std::size_t missing = 0; missing < kEntryPoints.size(); ++missing) {
        world().reset();
        world().device.install();
        world().device.withhold(kEntryPoints[missing]);
        trace.forget();
        EWSIntf device;

        EXPECT_FALSE(device.isLoaded()) << kEntryPoints[missing];

        EXPECT_EQ(device.lastError(), 127U);
        ASSERT_EQ(trace.all().size(), 10U);
        EXPECT_TRUE(std::regex_match(trace.all()[0], std::regex(" +hMod = [0-9a-f]{8}")));
        for (std::size_t line = 0; line < kEntryPoints.size(); ++line) {
            const std::string& text = trace.all()[line + 1];
            EXPECT_TRUE(std::regex_match(
                text, std::regex(" *pfn" + std::string(kEntryPoints[line]) + " = [0-9a-f]{8}")));
            EXPECT_EQ(text.find(" = 00000000") != std::string::npos, line == missing) << text;
        }
    }
}

TEST_F(EwsIntfTest, APageArrivesByteForByte) {
    std::string bytes;
    for (int value = 0; value < 256; ++value)
        bytes += static_cast<char>(value);
    world().device.install();
    world().device.setPage(kPath, bytes);

    EXPECT_TRUE(EWSIntf().get_page(kPort, kPath, page));

    EXPECT_EQ(page, bytes);
    EXPECT_EQ(world().device.openedPorts(), std::vector<std::wstring>{kPort});
    EXPECT_TRUE(debuggerTexts().empty());
}

TEST_F(EwsIntfTest, APageOfOneByteIsAPage) {
    world().device.install();
    world().device.setPage(kPath, "x");

    EXPECT_TRUE(EWSIntf().get_page(kPort, kPath, page));

    EXPECT_EQ(page, "x");
}

TEST_F(EwsIntfTest, APageThatFillsTheBufferArrivesWhole) {
    world().device.install();
    world().device.setPage(kPath, std::string(65536, 'x'));

    EXPECT_TRUE(EWSIntf().get_page(kPort, kPath, page));

    EXPECT_EQ(page, std::string(65536, 'x'));
}

TEST_F(EwsIntfTest, APageLargerThanTheBufferFails) {
    world().device.install();
    world().device.setPage(kPath, std::string(65537, 'x'));

    EXPECT_FALSE(EWSIntf().get_page(kPort, kPath, page));

    EXPECT_EQ(page, "");
}

TEST_F(EwsIntfTest, AReceivedLengthBeyondTheBufferFails) {
    world().device.install();
    world().device.setPage(kPath, "<a/>");
    for (const std::uint32_t claimed : {65537U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        world().device.claimLength(claimed);
        page = "before";

        EXPECT_FALSE(EWSIntf().get_page(kPort, kPath, page)) << claimed;

        EXPECT_EQ(page, "");
    }
}

TEST_F(EwsIntfTest, AReceivedLengthWithinTheBufferIsBelieved) {
    world().device.install();
    world().device.setPage(kPath, "<a/>");
    world().device.claimLength(6);

    EXPECT_TRUE(EWSIntf().get_page(kPort, kPath, page));

    EXPECT_EQ(page, std::string("<a/>\0\0", 6));
}

TEST_F(EwsIntfTest, APageOfUntoldLengthFails) {
    world().device.install();
    world().device.setPage(kPath, "<a/>");
    world().device.tellNoLength();

    EXPECT_FALSE(EWSIntf().get_page(kPort, kPath, page));

    EXPECT_EQ(page, "");
}

TEST_F(EwsIntfTest, AnEmptyPageFails) {
    world().device.install();
    world().device.setPage(kPath, "");

    EXPECT_FALSE(EWSIntf().get_page(kPort, kPath, page));

    EXPECT_EQ(page, "");
}

TEST_F(EwsIntfTest, APageThatTheDeviceDoesNotHaveFails) {
    world().device.install();

    EXPECT_FALSE(EWSIntf().get_page(kPort, kPath, page));

    EXPECT_EQ(page, "");
    EXPECT_EQ(world().device.openedPorts().size(), 1U);
}

TEST_F(EwsIntfTest, ADeviceThatDoesNotOpenFails) {
    world().device.install();
    world().device.setPage(kPath, "<a/>");
    world().faults.add({Call::DeviceOpen, 1, true});

    EXPECT_FALSE(EWSIntf().get_page(kPort, kPath, page));
    EXPECT_FALSE(EWSIntf().push_button(kPort, L"go"));

    EXPECT_EQ(page, "");
    EXPECT_TRUE(world().device.presses().empty());
}

TEST_F(EwsIntfTest, WithoutTheLibraryAPageFailsWithError6) {
    EWSIntf device;

    EXPECT_FALSE(device.get_page(kPort, kPath, page));

    EXPECT_EQ(page, "");
    EXPECT_EQ(device.lastError(), 6U);
    EXPECT_EQ(debuggerTexts(), Lines{kNoHandleForPage});
    EXPECT_EQ(trace.all().size(), 10U);
}

TEST_F(EwsIntfTest, WithoutTheLibraryAButtonFailsWithError6) {
    EWSIntf device;

    EXPECT_FALSE(device.push_button(kPort, L"cancel"));

    EXPECT_EQ(device.lastError(), 6U);
    EXPECT_EQ(debuggerTexts(), Lines{kNoHandleForButton});
}

TEST_F(EwsIntfTest, WithoutGetPageAPageFailsWithError127AndTheDeviceIsClosed) {
    world().device.install();
    world().device.withhold("GetPage");
    EWSIntf device;

    EXPECT_FALSE(device.get_page(kPort, kPath, page));

    EXPECT_EQ(page, "");
    EXPECT_EQ(device.lastError(), 127U);
    EXPECT_EQ(debuggerTexts(), Lines{kNoPage});
    EXPECT_EQ(world().device.openedPorts().size(), 1U);
    EXPECT_TRUE(trace.all().empty());
}

TEST_F(EwsIntfTest, WithoutPushLedmButtonAButtonFailsWithError127AndTheDeviceIsClosed) {
    world().device.install();
    world().device.withhold("PushLedmButtonW");
    EWSIntf device;

    EXPECT_FALSE(device.push_button(kPort, L"cancel"));

    EXPECT_EQ(device.lastError(), 127U);
    EXPECT_EQ(debuggerTexts(), Lines{kNoButton});
    EXPECT_EQ(world().device.openedPorts().size(), 1U);
}

TEST_F(EwsIntfTest, AnIncompleteLibraryNeitherReadsNorPresses) {
    for (const char* const missing : kEntryPoints) {
        world().reset();
        world().device.install();
        world().device.setPage(kPath, "<a/>");
        world().device.withhold(missing);
        EWSIntf device;

        EXPECT_FALSE(device.get_page(kPort, kPath, page)) << missing;
        EXPECT_FALSE(device.push_button(kPort, L"go")) << missing;

        EXPECT_EQ(device.lastError(), 127U);
        EXPECT_TRUE(world().device.openedPorts().empty());
        EXPECT_TRUE(world().device.presses().empty());
    }
}

TEST_F(EwsIntfTest, AButtonIsPressedOnItsPort) {
    world().device.install();

    EXPECT_TRUE(EWSIntf().push_button(L"the printer", L"cancel"));

    const auto presses = world().device.presses();
    ASSERT_EQ(presses.size(), 1U);
    EXPECT_EQ(presses[0].port, L"the printer");
    EXPECT_EQ(presses[0].button, L"cancel");
}

TEST_F(EwsIntfTest, AButtonThatTheDeviceRefusesFails) {
    world().device.install();
    world().faults.add({Call::DeviceButton});

    EXPECT_FALSE(EWSIntf().push_button(kPort, L"go"));
}

TEST_F(EwsIntfTest, GetPageAndPushLedmButtonAreLookedUpOnceEach) {
    world().device.install();
    world().device.setPage(kPath, "<a/>");
    EWSIntf device;
    world().faults.reset();

    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(device.get_page(kPort, kPath, page));
        EXPECT_TRUE(device.push_button(kPort, L"go"));
    }

    EXPECT_EQ(world().faults.calls(Call::FunctionLookup), 2);
    EXPECT_EQ(world().faults.calls(Call::DeviceOpen), 6);
}

TEST_F(EwsIntfTest, AFunctionThatWasMissingIsAskedForAgain) {
    world().device.install();
    world().device.withhold("GetPage");
    EWSIntf device;

    EXPECT_FALSE(device.get_page(kPort, kPath, page));
    EXPECT_FALSE(device.get_page(kPort, kPath, page));

    EXPECT_EQ(debuggerTexts(), (Lines{kNoPage, kNoPage}));
}

}  // namespace
