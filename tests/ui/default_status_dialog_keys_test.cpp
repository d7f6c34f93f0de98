// The keys of an alert.
#include "ui/default_status_dialog.h"

#include "tests/support/trace_lines.h"
#include "tests/ui/default_status_dialog_fixture.h"

#include <cstddef>
#include <string>

namespace {

TEST_F(DefaultStatusDialogTest, AnswersItsKeys) {
    struct Case {
        wchar_t key;
        Codes codes;
        std::size_t helps;
        const char* trace;
    };
    const Case cases[] = {{L'U', {104}, 0, "WM_CHAR supplies"},
                          {L'R', {101}, 0, nullptr},
                          {L'O', {2}, 0, "WM_CHAR Return"},
                          {L'H', {}, 1, "WM_CHAR help"},
                          {L'h', {}, 1, "WM_CHAR help"},
                          {L'C', {}, 0, nullptr},
                          {L'u', {}, 0, nullptr},
                          {L'r', {}, 0, nullptr},
                          {L'o', {}, 0, nullptr},
                          {L'c', {}, 0, nullptr},
                          {L'x', {}, 0, nullptr}};
    for (const Case& expected : cases) {
        openQuietly(0, 41100);
        const std::size_t helps = headless::messages().size();
        const TraceLines lines;

        headless::typeKey(window(), expected.key);

        EXPECT_EQ(codes(), expected.codes) << static_cast<char>(expected.key);
        EXPECT_EQ(headless::messages().size(), helps + expected.helps);
        const auto number = std::to_string(static_cast<int>(expected.key));
        EXPECT_TRUE(lines.contains("dlgProc(msg==WM_CHAR): wparam=" + number + ", lparam=0x0"));
        if (expected.trace != nullptr) {
            EXPECT_TRUE(lines.contains(expected.trace));
        }
        alert.reset();
    }
}

TEST_F(DefaultStatusDialogTest, AnswersSmallLettersWithAlt) {
    openQuietly(0, 41100);

    for (const wchar_t letter : std::wstring(L"urohx"))
        headless::typeWithAlt(window(), letter);

    EXPECT_EQ(codes(), (Codes{104, 101, 2}));
    EXPECT_EQ(headless::messages().size(), 1U);
}

TEST_F(DefaultStatusDialogTest, TakesCapitalLettersWithAltAsTheyAre) {
    openQuietly(0, 41100);

    for (const wchar_t letter : std::wstring(L"URO"))
        headless::typeWithAlt(window(), letter);

    EXPECT_EQ(codes(), (Codes{104, 101, 2}));
}

// The low bytes of the first five characters are the letters O, H, H, U and R. The last two are the
// neighbours of a and z in ASCII.
TEST_F(DefaultStatusDialogTest, DoesNotTakeALetterOfAnotherAlphabetForAKeyOfItsOwn) {
    openQuietly(0, 41100);

    for (const wchar_t letter : std::wstring(L"\u044F\u0448\u0648\u0155\u0152`{"))
        headless::typeWithAlt(window(), letter);

    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(headless::messages().empty());
}

TEST_F(DefaultStatusDialogTest, IgnoresTheKeysOfButtonsThatCannotBePressed) {
    openQuietly(0, 41100);
    for (const int button : {130, 131, 134, 1018})
        control(button).enabled = false;
    for (const wchar_t letter : std::wstring(L"HhURCO"))
        headless::typeKey(window(), letter);
    for (const int button : {130, 131, 134, 1018}) {
        control(button).enabled = true;
        control(button).visible = false;
    }
    for (const wchar_t letter : std::wstring(L"HhURCO"))
        headless::typeKey(window(), letter);
    for (const int button : {130, 131, 134, 1018})
        frame().controls.erase(button);
    for (const wchar_t letter : std::wstring(L"HhURCO"))
        headless::typeKey(window(), letter);

    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(headless::messages().empty());
}

TEST_F(DefaultStatusDialogTest, ContinuesByKeyWhileTheOkButtonShowsTheCaptionOfTheAlert) {
    openWithCaption(50012, L"&Continue");
    const TraceLines lines;

    headless::typeKey(window(), L'C');
    EXPECT_EQ(codes(), (Codes{3}));
    EXPECT_TRUE(lines.contains("WM_CHAR continue or ok"));
    control(130).text = L"something else";
    headless::typeKey(window(), L'C');
    headless::typeKey(window(), L'O');

    EXPECT_EQ(codes(), (Codes{3}));
}

// The trace tells what happened before an action that went wrong, so the key comes first in it.
TEST_F(DefaultStatusDialogTest, TracesAKeyBeforeItActs) {
    struct Case {
        wchar_t key;
        const char* trace;
    };
    const Case cases[] = {{L'H', "WM_CHAR help"},
                          {L'U', "WM_CHAR supplies"},
                          {L'C', "WM_CHAR continue or ok"},
                          {L'O', "WM_CHAR Return"}};
    for (const Case& expected : cases) {
        openWithCaption(50012, L"&Continue");
        const TraceLines lines;
        int acted = 0;
        const auto act = [&] {
            ++acted;
            EXPECT_TRUE(lines.contains(expected.trace)) << expected.trace;
        };
        onTold = [&](const Told&) { act(); };
        headless::setWhileMessageIsOpen(act);

        headless::typeKey(window(), expected.key);

        EXPECT_EQ(acted, 1) << expected.trace;
        onTold = nullptr;
        headless::setWhileMessageIsOpen(nullptr);
        alert.reset();
    }
}

TEST_F(DefaultStatusDialogTest, AcceptsOkByKeyWhileTheButtonShowsTheCaptionOfTheAlert) {
    openWithCaption(50012, L"&Continue");

    headless::typeKey(window(), L'O');

    EXPECT_EQ(codes(), (Codes{2}));
}

TEST_F(DefaultStatusDialogTest, TellsOneActionForEachKeyWhateverTheButtonShows) {
    openWithCaption(50012, L"&Continue");

    for (const wchar_t letter : std::wstring(L"URx"))
        headless::typeKey(window(), letter);

    EXPECT_EQ(codes(), (Codes{104, 101}));
}

// A box without an owner could come up behind the alert, which would still take input.
TEST_F(DefaultStatusDialogTest, OpensMessagesOverItsOwnWindow) {
    openQuietly(4, 10209);

    headless::press(window(), 131);
    headless::press(window(), 130);
    headless::typeKey(window(), L'H');
    headless::typeKey(window(), L'O');

    EXPECT_EQ(headless::messages().size(), 4U);
    for (const headless::Message& message : headless::messages())
        EXPECT_EQ(message.owner, window());
}

TEST_F(DefaultStatusDialogTest, AsksForAReminderTimeByKeyToo) {
    openQuietly(4, 10209);

    headless::typeKey(window(), L'O');

    EXPECT_EQ(headless::messages().size(), 1U);
    EXPECT_TRUE(told.empty());
}

}  // namespace
