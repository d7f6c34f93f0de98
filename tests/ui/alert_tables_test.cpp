#include "ui/button_faces.h"
#include "ui/help_texts.h"
#include "ui/picture_names.h"
#include "ui/validation_texts.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <set>

// Compares the tables of the alerts with lists of plain numbers, which were written independently
// of the tables.

namespace {

// The statuses from `first` to `last`, both included, and the help text that only they have.
struct HelpCase {
    int first, last;
    unsigned text, caption;
};

// clang-format off
constexpr HelpCase kHelpCases[] = {
    {  277,   277, 277, 0},
    {10209, 10209, 281, 357},
    {10219, 10219, 268, 358},
    {10300, 10300, 354, 359},
    {10403, 10403, 267, 0},
    {10407, 10407, 267, 0},
    {10512, 10512, 266, 0},
    {30017, 30017, 270, 0},
    {30119, 30119, 265, 0},
    {40010, 40010, 270, 0},
    {40017, 40017, 270, 0},
    {40020, 40021, 262, 0},
    {40120, 40120, 176, 0},
    {40600, 40600, 271, 0},
    {40608, 40608, 269, 0},
    {40610, 40610, 269, 0},
    {40612, 40612, 269, 0},
    {40614, 40614, 269, 0},
    {40625, 40625, 266, 0},
    {41000, 41199, 265, 0},
    {41201, 41299, 265, 0},
    {41301, 41399, 265, 0},
    {41900, 41900, 265, 0},
    {42000, 42002, 261, 0},
    {42004, 42004, 279, 0},
    {50003, 50003, 274, 0},
    {50005, 50005, 276, 0},
    {50007, 50008, 274, 0},
    {50025, 50025, 274, 0},
};
// clang-format on

TEST(HelpTexts, FollowTheListOfStatusesAndAreGeneralBetweenThem) {
    constexpr int kLastStatus = 65535;
    const HelpCase* next = kHelpCases;
    for (int status = -1; status <= kLastStatus; ++status) {
        if (next != std::end(kHelpCases) && status > next->last) ++next;
        const bool isListed = next != std::end(kHelpCases) && status >= next->first;
        const HelpText help = helpText(status);
        EXPECT_EQ(help.text, isListed ? next->text : 278U) << status;
        EXPECT_EQ(help.caption, isListed ? next->caption : 0U) << status;
    }
    EXPECT_EQ(next, std::end(kHelpCases)) << "every row was looked at";
}

TEST(HelpTexts, CompareTheForeignCartridgeInSixteenBits) {
    EXPECT_EQ(helpText(0x10000 + 10403).text, 267U);
    EXPECT_EQ(helpText(0x10000 + 10407).text, 267U);
    EXPECT_EQ(helpText(0x10000 + 10404).text, 278U);
    EXPECT_EQ(helpText(0x10000 + 10512).text, 278U);
    EXPECT_EQ(helpText(0x10000 + 41000).text, 278U);
}

TEST(ButtonFaces, FollowTheListOfPictures) {
    struct Case {
        int control, sizedBy, pressed, normal;
        unsigned caption;
        bool white;
    };
    const Case cases[] = {{130, 167, 167, 166, 156, true},
                          {131, 175, 175, 176, 247, false},
                          {1018, 177, 177, 178, 248, false},
                          {134, 177, 212, 211, 218, false}};
    ASSERT_EQ(buttonFaces().size(), std::size(cases));
    for (const Case& expected : cases) {
        const ButtonFace* face = buttonFace(expected.control);
        ASSERT_NE(face, nullptr);
        EXPECT_EQ(face->sizedBy, expected.sizedBy);
        EXPECT_EQ(face->pressed, expected.pressed);
        EXPECT_EQ(face->normal, expected.normal);
        EXPECT_EQ(face->caption, expected.caption);
        EXPECT_EQ(face->whiteCaption, expected.white);
    }
}

TEST(ButtonFaces, LeaveTheSettingsButtonUnpainted) {
    EXPECT_EQ(buttonFace(135), nullptr);
}

TEST(PictureNames, FollowTheListForScreenReaders) {
    EXPECT_EQ(pictureName(1002, 148), 366U);
    EXPECT_EQ(pictureName(1002, 149), 367U);
    EXPECT_EQ(pictureName(1002, 150), 368U);
    EXPECT_EQ(pictureName(133, 205), 369U);
    EXPECT_EQ(pictureName(133, 182), 369U);
    EXPECT_EQ(pictureName(136, 209), 370U);
    EXPECT_EQ(pictureName(137, 207), 371U);
    EXPECT_EQ(pictureName(137, 208), 372U);
}

TEST(PictureNames, AreNotGivenToAPictureThatIsNotThere) {
    EXPECT_EQ(pictureName(133, 0), 0U);
    EXPECT_EQ(pictureName(1002, 163), 0U);
    EXPECT_EQ(pictureName(130, 149), 0U);
    EXPECT_EQ(pictureName(1002, 0), 0U);
    EXPECT_EQ(pictureName(137, 149), 0U);
}

TEST(CartridgeCheckTexts, HaveTheIdsOfTheirControls) {
    std::set<int> controls;
    for (const ControlText& row : cartridgeCheckTexts()) {
        EXPECT_EQ(row.text, static_cast<unsigned>(row.control));
        controls.insert(row.control);
    }
    EXPECT_EQ(controls, (std::set<int>{1028, 1029, 1031, 1036, 1051, 1063}));
}

TEST(CartridgeCheckTexts, OfTheDetailsHaveTheIdsOfTheirControlsButTheDoneButton) {
    std::set<int> controls;
    for (const ControlText& row : cartridgeCheckDetailTexts()) {
        EXPECT_EQ(row.text, row.control == 1 ? 1067U : static_cast<unsigned>(row.control));
        controls.insert(row.control);
    }
    EXPECT_EQ(controls, (std::set<int>{1, 1037, 1038, 1039, 1040, 1041, 1042, 1047, 1048, 1049}));
}

TEST(CartridgeCheckActions, FollowTheListOfControls) {
    const std::map<int, CheckAction> expected = {{2, CheckAction::Close},
                                                 {1036, CheckAction::Submit},
                                                 {1051, CheckAction::ShowDetails},
                                                 {1063, CheckAction::Close}};
    for (int control = 0; control <= 2000; ++control) {
        const auto row = expected.find(control);
        EXPECT_EQ(checkAction(cartridgeCheckTexts(), control),
                  row != expected.end() ? row->second : CheckAction::None)
            << control;
    }
}

TEST(CartridgeCheckActions, OfTheDetailsFollowTheListOfControls) {
    const std::map<int, CheckAction> expected = {
        {1, CheckAction::Close}, {2, CheckAction::Close}, {1049, CheckAction::OpenPrivacyPage}};
    for (int control = 0; control <= 2000; ++control) {
        const auto row = expected.find(control);
        EXPECT_EQ(checkAction(cartridgeCheckDetailTexts(), control),
                  row != expected.end() ? row->second : CheckAction::None)
            << control;
    }
}

}  // namespace
