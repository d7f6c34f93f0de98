// What the factory writes into the description of an alert, and that the alert shows it. The rows
// have plain numbers of texts and pictures and no names from the code, so that a wrong name in the
// code is noticed.
#include "ui/alert_factory.h"

#include "platform/simulated/world.h"
#include "tests/ui/alert_fixture.h"

#include <map>
#include <memory>
#include <string>
#include <utility>

using platform::simulated::world;

namespace {

using Ids = std::map<std::wstring, int>;

// A number for printers of the K7400 family and one for all other printers.
struct ByPrinter {
    int other, family;
};

// A 0 means that the factory does not write the key.
struct Row {
    int type, icon, headline;
    ByPrinter detail;
    int message;
    ByPrinter picture;
    int returns;
    bool hasSupplies;
    int condition;
    unsigned suppliesDetail;
    const wchar_t* pages;  // null: no line about pages
};

// clang-format off
constexpr Row kRows[] = {
    // type icon headline detail     message picture     returns supplies condition, detail, pages
    {-1, 149, 0,    {0, 0},     0,   {205, 206}, 0,   false, 0,   0, nullptr},
    { 0, 149, 149,  {351, 150}, 0,   {198, 199}, 0,   false, 0,   0, nullptr},
    { 1, 149, 160,  {154, 154}, 0,   {198, 199}, 0,   false, 0,   0, nullptr},
    { 2, 149, 0,    {154, 154}, 0,   {205, 206}, 0,   false, 0,   0, nullptr},
    { 4, 150, 284,  {0, 0},     0,   {205, 206}, 218, true,  207, 281, L"1200"},
    { 5, 149, 213,  {0, 0},     0,   {205, 206}, 0,   true,  0,   0, nullptr},
    { 6, 149, 212,  {0, 0},     0,   {205, 206}, 0,   true,  207, 0, L"?"},
    { 7, 148, 352,  {0, 0},     0,   {205, 206}, 218, true,  208, 0, L"1200"},
    { 8, 150, 363,  {0, 0},     0,   {205, 206}, 218, true,  207, 210, L"?"},
    { 9, 149, 1009, {0, 0},     165, {205, 206}, 0,   false, 0,   0, nullptr},
    {10, 149, 1008, {125, 125}, 0,   {205, 206}, 0,   false, 0,   0, nullptr},
    {11, 149, 166,  {0, 0},     165, {205, 206}, 0,   false, 0,   0, nullptr},
    {12, 149, 175,  {0, 0},     165, {205, 206}, 0,   false, 0,   0, nullptr},
    {13, 149, 0,    {0, 0},     0,   {205, 206}, 0,   false, 0,   0, nullptr},
    {14, 149, 167,  {0, 0},     165, {205, 206}, 0,   false, 0,   0, nullptr},
    {15, 149, 168,  {0, 0},     165, {205, 206}, 0,   false, 0,   0, nullptr},
    {16, 149, 169,  {0, 0},     165, {205, 206}, 0,   false, 0,   0, nullptr},
    {17, 149, 170,  {0, 0},     165, {205, 206}, 0,   false, 0,   0, nullptr},
    {18, 149, 173,  {0, 0},     165, {205, 206}, 0,   false, 0,   0, nullptr},
    {19, 149, 231,  {0, 0},     0,   {200, 201}, 0,   false, 0,   0, nullptr},
    {20, 149, 220,  {0, 0},     0,   {200, 201}, 0,   false, 0,   0, nullptr},
    {21, 149, 232,  {0, 0},     0,   {196, 197}, 0,   false, 0,   0, nullptr},
    {22, 149, 234,  {0, 0},     0,   {182, 182}, 0,   false, 0,   0, nullptr},
    {23, 149, 233,  {0, 0},     0,   {205, 206}, 0,   false, 0,   0, nullptr},
    {24, 148, 353,  {0, 0},     0,   {205, 206}, 0,   true,  207, 0, L"?"},
    {28, 149, 0,    {0, 0},     172, {205, 206}, 0,   false, 0,   0, nullptr},
    {29, 150, 222,  {0, 0},     0,   {205, 206}, 218, true,  207, 210, L"?"},
    {30, 150, 285,  {0, 0},     0,   {205, 206}, 218, true,  207, 268, L"--"},
    {31, 150, 355,  {0, 0},     0,   {205, 206}, 218, true,  207, 354, L"--"},
    {32, 149, 212,  {0, 0},     0,   {205, 206}, 0,   true,  207, 0, L"?"},
    {33, 149, 0,    {0, 0},     0,   {205, 206}, 0,   false, 0,   0, nullptr},
};
// clang-format on

constexpr int kNeedsAttention = 10500;  // every description of these tests has this status

class AlertDescriptionTest : public AlertFixture {
protected:
    // All numbers that the factory writes for a type.
    Ids written(int type) {
        constexpr const wchar_t* kKeys[] = {L"dialogID",
                                            L"idsTitle",
                                            L"idsSubTitle",
                                            L"idsSubTitle1",
                                            L"idbPrinter",
                                            L"idbIcon",
                                            L"idsShop",
                                            L"idsReturns",
                                            L"ids1",
                                            L"idsFaxReceived",
                                            L"idsManualTitle",
                                            L"idsManual1",
                                            L"idsManual2",
                                            L"idsManual3",
                                            L"idbDuplex1",
                                            L"idbDuplex2",
                                            L"idbDuplex3",
                                            L"idsDialogCaption",
                                            L"genuine cartridge",
                                            L"disalbeHelpBtn",
                                            L"disalbeRecycleBtn",
                                            L"showSupplies",
                                            L"suppliesIconID",
                                            L"suppliesIconConditionID",
                                            L"buttonMessage",
                                            L"idsFraud",
                                            L"idsFaxReceivedTB",
                                            L"ids2",
                                            L"idsSnoozeSelect",
                                            L"idsSnoozeRemindAfter"};
        fresh = std::make_unique<arbor::PropertyHolder>();
        fresh->setPointer(L"hSinstance", strings);
        fresh->setWString(L"idsPrinter", kPrinter);
        fresh->setInt(L"status", kNeedsAttention);
        fresh->setInt(L"dialog type", type);
        dialog = createAlertDialog(*fresh);
        EXPECT_NE(dialog, nullptr);
        Ids ids;
        for (const wchar_t* key : kKeys) {
            if (fresh->hasProperty(key)) ids[key] = fresh->getInt(key, 0);
        }
        return ids;
    }

    static Ids expected(const Row& row, bool isFamilyPrinter) {
        const auto forPrinter = [isFamilyPrinter](const ByPrinter& ids) {
            return isFamilyPrinter ? ids.family : ids.other;
        };
        Ids ids = {{L"dialogID", row.hasSupplies ? 210 : 137},
                   {L"idsTitle", 107},
                   {L"idbIcon", row.icon},
                   {L"idsSubTitle", row.headline},
                   {L"idsSubTitle1", forPrinter(row.detail)},
                   {L"ids1", row.message},
                   {L"idbPrinter", forPrinter(row.picture)},
                   {L"idsReturns", row.returns},
                   {L"idsShop", 217},
                   {L"showSupplies", row.hasSupplies ? 1 : 0},
                   {L"suppliesIconID", row.hasSupplies ? 209 : 0},
                   {L"suppliesIconConditionID", row.condition}};
        std::erase_if(ids, [](const auto& id) { return id.second == 0; });
        return ids;
    }

    // What a control of the open alert shows; nothing where its template does not have the control.
    headless::Control shown(int id) {
        const auto& controls = headless::find(dialog->window())->controls;
        const auto found = controls.find(id);
        return found != controls.end() ? found->second : headless::Control{};
    }
    static std::wstring textOrNothing(unsigned id) { return id != 0 ? text(id) : std::wstring(); }

    std::unique_ptr<arbor::PropertyHolder> fresh;
    std::unique_ptr<DefaultStatusDialog> dialog;
};

TEST_F(AlertDescriptionTest, HasTheIdsOfItsTypeAndNoOthers) {
    for (const Row& row : kRows) {
        EXPECT_EQ(written(row.type), expected(row, false)) << "type " << row.type;
    }
}

TEST_F(AlertDescriptionTest, HasTheIdsOfTheFamilyForItsPrinters) {
    useFamilyPrinter();

    for (const Row& row : kRows) {
        EXPECT_EQ(written(row.type), expected(row, true)) << "type " << row.type;
    }
}

TEST_F(AlertDescriptionTest, IsWhatTheAlertShows) {
    constexpr int kManualDuplex = 3;  // has controls of its own, which have a test of their own
    for (int type = -1; type <= 33; ++type) {
        if (type == kManualDuplex) continue;
        SCOPED_TRACE(type);
        Ids ids = written(type);
        ASSERT_TRUE(dialog->create());

        EXPECT_EQ(headless::find(dialog->window())->templateId, ids[L"dialogID"]);
        EXPECT_EQ(headless::find(dialog->window())->icon, 107);
        for (const auto& [control, key] :
             {std::pair{1002, L"idbIcon"}, std::pair{133, L"idbPrinter"},
              std::pair{136, L"suppliesIconID"}, std::pair{137, L"suppliesIconConditionID"}})
            EXPECT_EQ(shown(control).picture, ids[key]) << control;
        for (const auto& [control, key] :
             {std::pair{1004, L"idsSubTitle"}, std::pair{132, L"ids1"}})
            EXPECT_EQ(shown(control).text, textOrNothing(static_cast<unsigned>(ids[key])));
        if (!fresh->hasProperty(L"subtitle1")) {
            EXPECT_EQ(shown(1012).text, textOrNothing(static_cast<unsigned>(ids[L"idsSubTitle1"])));
        }
    }
}

TEST_F(AlertDescriptionTest, HasTheSuppliesForTheTypesThatHaveThem) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.type);
        written(row.type);
        ASSERT_TRUE(dialog->create());

        EXPECT_EQ(shown(1059).text,
                  row.hasSupplies ? L"Toner cartridge, part number: QV-7400A" : L"");
        EXPECT_EQ(shown(1060).text, textOrNothing(row.suppliesDetail));
        EXPECT_EQ(shown(1061).text, row.pages == nullptr
                                        ? std::wstring()
                                        : std::wstring(L"Estimated pages remaining: ") + row.pages);
        EXPECT_EQ(shown(1062).text, row.pages == nullptr ? std::wstring() : text(142));
    }
    for (const int type : {3, 25, 26, 27}) {
        written(type);
        EXPECT_FALSE(fresh->hasProperty(L"alertDetail")) << type;
    }
}

TEST_F(AlertDescriptionTest, HasAFilledDetailForTheMediaAlertsOnly) {
    for (const Row& row : kRows) {
        written(row.type);
        EXPECT_EQ(fresh->hasProperty(L"subtitle1"), row.type == 1 || row.type == 2) << row.type;
    }
}

TEST_F(AlertDescriptionTest, HasTheStepsOfManualDuplex) {
    const Ids steps = {{L"dialogID", 139},       {L"idsTitle", 107},   {L"idbIcon", 149},
                       {L"idbPrinter", 205},     {L"idsShop", 217},    {L"idsDialogCaption", 181},
                       {L"idsManualTitle", 176}, {L"idsManual1", 177}, {L"idsManual2", 178},
                       {L"idsManual3", 180},     {L"idbDuplex1", 186}, {L"idbDuplex2", 187},
                       {L"idbDuplex3", 188}};

    EXPECT_EQ(written(3), steps);
}

TEST_F(AlertDescriptionTest, HasNoIconAndNoHelpForANewCartridge) {
    const Ids greeting = {{L"dialogID", 137},    {L"idsTitle", 107},    {L"idbPrinter", 205},
                          {L"idsShop", 217},     {L"idsSubTitle", 250}, {L"genuine cartridge", 1},
                          {L"disalbeHelpBtn", 1}};

    EXPECT_EQ(written(25), greeting);
}

TEST_F(AlertDescriptionTest, HasALinkToTheCheckOnChineseSystems) {
    world().texts.setSystemLanguage(2052);
    const Ids offer = {{L"dialogID", 137},        {L"idsTitle", 107},    {L"idbPrinter", 205},
                       {L"idsShop", 217},         {L"idsSubTitle", 347}, {L"ids1", 360},
                       {L"genuine cartridge", 1}, {L"disalbeHelpBtn", 1}};

    EXPECT_EQ(written(25), offer);
}

TEST_F(AlertDescriptionTest, HasNeitherPictureNorShopForAFax) {
    const auto fax = [](const wchar_t* marker, int detail) {
        return Ids{{L"dialogID", 137},    {L"idsTitle", 107},        {L"idbIcon", 148},
                   {L"idsSubTitle", 350}, {L"idsSubTitle1", detail}, {marker, detail},
                   {L"disalbeHelpBtn", 1}};
    };

    EXPECT_EQ(written(26), fax(L"idsFaxReceived", 348));
    EXPECT_EQ(written(27), fax(L"idsFaxReceivedTB", 349));
}

TEST_F(AlertDescriptionTest, IsThatOfTheFirstTypeWhereNoTypeIsNamed) {
    arbor::PropertyHolder untyped;
    untyped.setPointer(L"hSinstance", strings);

    EXPECT_NE(createAlertDialog(untyped), nullptr);

    EXPECT_EQ(untyped.getInt(L"idsSubTitle", 0), 149);
}

}  // namespace
