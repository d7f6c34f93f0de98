#include "monitor/status_dispatch.h"

#include "tests/monitor/listener_fixture.h"

#include <map>

namespace {

using Calls = std::vector<std::string>;

class StatusDispatchTest : public ListenerFixture<RecordingListener> {
protected:
    Calls callsFor(std::int32_t code, std::int32_t subcode = tern::kDeviceStatus) {
        EXPECT_FALSE(status(code, subcode)) << "status " << code << " was filtered";
        return listener->takeCalls();
    }
};

// The single status codes by number, written independently of the table in the code. The ranges
// follow below.
const std::map<std::int32_t, std::string> kSingleCodes = {{1, "cart data"},
                                                          {10209, "toner low 0"},
                                                          {10219, "toner low 1"},
                                                          {10300, "toner out"},
                                                          {10403, "7"},
                                                          {10407, "7"},
                                                          {10500, "generic 10500"},
                                                          {10511, "generic 10511"},
                                                          {10512, "6"},
                                                          {30017, "29"},
                                                          {30119, "2"},
                                                          {30201, "11"},
                                                          {40010, "29"},
                                                          {40017, "8"},
                                                          {40020, "19"},
                                                          {40021, "20"},
                                                          {40120, "3"},
                                                          {40121, "3"},
                                                          {40600, "5"},
                                                          {40608, "24"},
                                                          {40610, "24"},
                                                          {40612, "24"},
                                                          {40614, "24"},
                                                          {40625, "32"},
                                                          {41900, "2"},
                                                          {42000, "22"},
                                                          {42001, "23"},
                                                          {42002, "21"},
                                                          {42003, "generic 42003"},
                                                          {42004, "generic 42004"},
                                                          {42100, "generic 42100"},
                                                          {42300, "generic 42300"},
                                                          {50003, "14"},
                                                          {50005, "18"},
                                                          {50006, "generic 50006"},
                                                          {50007, "15"},
                                                          {50008, "16"},
                                                          {50012, "10"},
                                                          {50020, "12"},
                                                          {50021, "9"},
                                                          {50023, "9"},
                                                          {50024, "9"},
                                                          {50025, "17"},
                                                          {100000, "26"},
                                                          {100001, "27"}};

std::string expectedFor(std::int32_t code) {
    if (const auto single = kSingleCodes.find(code); single != kSingleCodes.end())
        return single->second;
    if (code >= 41100 && code <= 41199) return "0";
    if (code >= 41000 && code <= 41099) return "media 1";
    if (code >= 41201 && code <= 41299) return "media 2";
    if (code >= 41301 && code <= 41399) return "media 3";
    return "";
}

TEST_F(StatusDispatchTest, EveryCodeReachesItsHandlerAndNoOther) {
    for (std::int32_t code = -2; code <= 100100; ++code) {
        const Calls calls = callsFor(code);

        const std::string expected = expectedFor(code);
        ASSERT_EQ(calls, expected.empty() ? Calls{} : Calls{expected}) << "status " << code;
    }
}

TEST_F(StatusDispatchTest, CodesAtTheEndsOfTheirTypeAreDropped) {
    EXPECT_EQ(callsFor(std::numeric_limits<std::int32_t>::max()), Calls{});
    EXPECT_EQ(callsFor(std::numeric_limits<std::int32_t>::min()), Calls{});
}

TEST_F(StatusDispatchTest, TheNewCartridgeSubcodeGreetsWhateverTheStatus) {
    EXPECT_EQ(callsFor(0, 1), Calls{"cart data"});
    EXPECT_EQ(callsFor(777, 1), Calls{"cart data"});
}

TEST_F(StatusDispatchTest, RowsAboveTheGreetingComeFirst) {
    EXPECT_EQ(callsFor(41150, 1), Calls{"0"});
    EXPECT_EQ(callsFor(10209, 1), Calls{"toner low 0"});
}

TEST_F(StatusDispatchTest, RowsBelowTheGreetingDoNot) {
    EXPECT_EQ(callsFor(100000, 1), Calls{"cart data"});
    EXPECT_EQ(callsFor(10500, 1), Calls{"cart data"});
}

}  // namespace
