#include "tests/monitor/alerts_fixture.h"

#include <ostream>
#include <string>
#include <vector>

// Each action of an alert has exactly the effects that these tests list, and no others.
namespace {

constexpr wchar_t kPrinter[] = L"K7400";
constexpr wchar_t kCompanion[] = L"C:\\Orrery\\orrery.exe";
constexpr char kInstalled[] = "C:\\Program Files\\QV\\QV Beamline K7400 MFP Series\\";

// All the effects that an action can have.
struct Effects {
    bool closed = false;
    bool compact = false;
    bool madeLink = false;
    std::vector<std::wstring> addresses;
    std::vector<std::wstring> programs;
    std::size_t checks = 0;
    std::size_t shops = 0;

    friend bool operator==(const Effects& left, const Effects& right) {
        return left.closed == right.closed && left.compact == right.compact &&
               left.madeLink == right.madeLink && left.addresses == right.addresses &&
               left.programs == right.programs && left.checks == right.checks &&
               left.shops == right.shops;
    }
    friend std::ostream& operator<<(std::ostream& out, const Effects& effects) {
        return out << "closed " << effects.closed << ", compact " << effects.compact << ", link "
                   << effects.madeLink << ", addresses " << effects.addresses.size()
                   << ", programs " << effects.programs.size() << ", checks " << effects.checks
                   << ", shops " << effects.shops;
    }
};

struct ActionRow {
    std::uint32_t action;
    Effects effects;

    friend std::ostream& operator<<(std::ostream& out, const ActionRow& row) {
        return out << "action " << row.action << ": " << row.effects;
    }
};

class DialogActionTest : public AlertsFixture, public testing::WithParamInterface<ActionRow> {
protected:
    // Installs everything that an action could reach, so that a wrong effect would be seen.
    DialogActionTest() {
        world().device.install();
        world().device.setPage("/DevMgmt/ShopForSupplies.xml", "<?xml?><supplies/>");
        for (const char* const file : {"P7400DEF.css", "P7400SIG.GIF", "P7400OS.HTM"})
            world().files.put(std::string(kInstalled) + file, "<html></html>");
        world().registry.setText(platform::Hive::LocalMachine, L"SOFTWARE\\Corvane\\Orrery\\",
                                 L"ApplicationPath", kCompanion);
        printerIs(kPrinter);
        status(41150);
    }

    static Effects seen() {
        Effects effects;
        const headless::Window* window = headless::find(windowOf(0));
        effects.closed = window == nullptr;
        effects.compact = window != nullptr && window->compact;
        effects.madeLink = window != nullptr && window->detailMadeLink;
        effects.addresses = world().desktop.addresses();
        effects.programs = world().desktop.programs();
        effects.checks = headless::cartridgeChecks().size();
        effects.shops = world().desktop.documents().size();
        return effects;
    }
};

TEST_P(DialogActionTest, DoesItsOwnAndNothingElse) {
    const WindowHandle window = windowOf(0);
    arbor::Message message(&alert_action::kMessageType, GetParam().action, 0);
    message.getProperties()->setPointer(L"statusdialog", headless::find(window)->dialog);
    message.getProperties()->setPointer(L"statusdialoghwnd", window);

    EXPECT_FALSE(listener->notify(&message));

    EXPECT_EQ(seen(), GetParam().effects) << GetParam().action;
}

Effects closes() {
    Effects effects;
    effects.closed = true;
    return effects;
}
Effects compacts(bool withLink) {
    Effects effects;
    effects.compact = true;
    effects.madeLink = withLink;
    return effects;
}
Effects opens(const wchar_t* address) {
    Effects effects;
    effects.addresses = {address};
    return effects;
}
Effects starts(const wchar_t* program) {
    Effects effects;
    effects.programs = {program};
    return effects;
}
Effects counts(std::size_t Effects::*effect) {
    Effects effects;
    effects.*effect = 1;
    return effects;
}

INSTANTIATE_TEST_SUITE_P(
    EveryAction, DialogActionTest,
    testing::Values(ActionRow{0, closes()}, ActionRow{1, closes()}, ActionRow{2, closes()},
                    ActionRow{3, closes()}, ActionRow{5, closes()},
                    ActionRow{100, opens(L"https://www.corvane.example/go/anticounterfeit")},
                    ActionRow{101, opens(L"https://www.corvane.example/go/recycle")},
                    ActionRow{102, counts(&Effects::checks)},
                    ActionRow{104, counts(&Effects::shops)}, ActionRow{1012, starts(kCompanion)},
                    ActionRow{90001, compacts(false)}, ActionRow{90002, compacts(true)}));

std::vector<ActionRow> withoutEffect() {
    std::vector<ActionRow> rows;
    for (const std::uint32_t action :
         {4U, 6U, 7U, 8U, 103U, 135U, 1008U, 90003U, 90004U, 90005U, 0xFFFFFFFFU}) {
        rows.push_back({action, Effects()});
    }
    return rows;
}

INSTANTIATE_TEST_SUITE_P(ActionsWithoutEffect, DialogActionTest,
                         testing::ValuesIn(withoutEffect()));

}  // namespace
