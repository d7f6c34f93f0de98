#include "platform/simulated/world.h"
#include "tests/support/allocation_torture.h"
#include "tests/support/clean_platform.h"
#include "tests/support/headless_dialogs/headless_dialogs.h"
#include "tests/support/strings_table.h"
#include "ui/alert_factory.h"

#include "arbor/property_holder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

// Every allocation of making an alert fails in turn.
namespace {

using platform::simulated::world;
using torture::Mode;

class UiTortureTest : public testing::TestWithParam<Mode> {};

void* speakEnglish() {
    constexpr unsigned short kEnglish = 1033;
    void* strings = world().texts.addModule(L"QVK7400SMs.dll");
    for (unsigned i = 0; i < kStringRowCount; ++i) {
        const StringRow& row = kStringRows[i];
        if (row.language == kEnglish) world().texts.add(strings, row.language, row.id, row.text);
    }
    return strings;
}

void describe(arbor::PropertyHolder& description, void* strings, int type, int status) {
    description.setPointer(L"hSinstance", strings);
    description.setWString(L"idsPrinter", L"Laser printer of the whole first floor");
    description.setInt(L"status", status);
    description.setInt(L"dialog type", type);
}

// Null, or an alert that opens and shows at least its frame.
TEST_P(UiTortureTest, AnAlertIsMadeWholeOrNotAtAll) {
    for (const auto& [type, status] : {std::pair{1, 41003}, {4, 10209}, {3, 40120}}) {
        cleanPlatform();
        headless::reset();
        void* const strings = speakEnglish();
        arbor::PropertyHolder description;
        describe(description, strings, type, status);
        std::unique_ptr<DefaultStatusDialog> alert;
        const auto scene = [&] { return [&] { alert = createAlertDialog(description); }; };
        const auto check = [&](long failed) {
            if (failed == 0) {
                ASSERT_NE(alert, nullptr);
            }
            if (alert != nullptr) {
                EXPECT_TRUE(alert->create());
                EXPECT_EQ(headless::windows().size(), 1U);
            }
            alert.reset();
            EXPECT_TRUE(headless::windows().empty());
        };

        const torture::Outcome outcome = torture::everyAllocation(GetParam(), scene, check);

        EXPECT_GT(outcome.points, 10);
    }
    cleanPlatform();
}

INSTANTIATE_TEST_SUITE_P(OnceAndForGood, UiTortureTest,
                         testing::Values(Mode::Once, Mode::FromThenOn));

}  // namespace
