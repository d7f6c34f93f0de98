#include "tools/printpath/live_session.h"

#include "tools/printpath/keyword.h"
#include "tools/printpath/scenario_parser.h"

#include <gtest/gtest.h>

namespace printpath {
namespace {

// Takes the line and says that its steps went well.
void play(LiveSession& session, const std::string& line) {
    EXPECT_EQ(session.take(line).wish, LiveWish::Play) << line;
    session.succeeded();
}

std::string savedOf(const LiveSession& session) {
    const auto saved = session.saved();
    if (const auto* text = std::get_if<std::string>(&saved)) return *text;
    ADD_FAILURE() << std::get<ScenarioError>(saved).message;
    return {};
}

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

std::size_t longestLine(const std::string& text) {
    std::size_t longest = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        longest = std::max(longest, end - at);
        at = end + 1;
    }
    return longest;
}

TEST(LiveSession, AStepIsToBePlayedAtOnce) {
    LiveSession session;

    EXPECT_EQ(session.take("  printer-id 7  # ours").wish, LiveWish::Play);

    ASSERT_EQ(session.toPlay().steps.size(), 1U);
    EXPECT_EQ(session.toPlay().steps[0]["id"].number, 7);
}

TEST(LiveSession, AnEmptyLineAndACommentDoNothing) {
    LiveSession session;

    for (const char* line : {"", "  \t", "# only a comment"})
        EXPECT_EQ(session.take(line).wish, LiveWish::Nothing) << line;
}

TEST(LiveSession, AWrongLineIsRefusedAndTheNextOneIsTaken) {
    LiveSession session;

    EXPECT_TRUE(holds(session.take("shout loud").text, "\"shout\""));
    EXPECT_TRUE(holds(session.take("pause soon").text, "soon"));
    EXPECT_EQ(session.take("say \"no end").wish, LiveWish::Refuse);

    play(session, "start");
}

TEST(LiveSession, AStepInTheWrongPlaceIsRefusedAndChangesNothing) {
    LiveSession session;

    const LiveAnswer early = session.take("status 41100");
    EXPECT_EQ(early.wish, LiveWish::Refuse);
    EXPECT_TRUE(holds(early.text, "status: no monitor runs here")) << early.text;
    play(session, "start");
    EXPECT_EQ(session.take("start").wish, LiveWish::Refuse);
    play(session, "status 41100");
}

TEST(LiveSession, RepeatedStepsArePlayedTogetherAtTheirEnd) {
    LiveSession session;

    EXPECT_EQ(session.take("repeat 3").wish, LiveWish::Nothing);
    EXPECT_EQ(session.take("say hello").wish, LiveWish::Nothing);
    EXPECT_EQ(session.take("end").wish, LiveWish::Play);

    EXPECT_EQ(session.toPlay().steps.size(), 3U);
}

TEST(LiveSession, AWrongStepDoesNotLoseTheRepeatedOnesBeforeIt) {
    LiveSession session;
    session.take("repeat 3");
    session.take("say hello");

    EXPECT_EQ(session.take("start").wish, LiveWish::Nothing);
    EXPECT_EQ(session.take("end").wish, LiveWish::Refuse);

    EXPECT_EQ(session.take("hang-up").wish, LiveWish::Nothing);
    EXPECT_EQ(session.take("expect-exit 0").wish, LiveWish::Nothing);
    EXPECT_EQ(session.take("end").wish, LiveWish::Play);
}

TEST(LiveSession, AStartThatFailedMayBeTriedAgain) {
    LiveSession session;
    session.take("start");

    session.failed(false);

    EXPECT_EQ(session.take("start").wish, LiveWish::Play);
}

TEST(LiveSession, AfterAStartThatOnlyThePipeFailedTheMonitorMayBeAwaited) {
    LiveSession session;
    session.take("start");

    session.failed(true);

    EXPECT_EQ(session.take("expect-exit 0").wish, LiveWish::Play);
}

TEST(LiveSession, AfterAWrongExitCodeTheMonitorMayBeStartedAgain) {
    LiveSession session;
    play(session, "start");
    session.take("expect-exit 5");

    session.failed(false);

    play(session, "start");
    EXPECT_TRUE(holds(savedOf(session), "start\nexpect-exit 5\nstart\n"));
}

TEST(LiveSession, AfterAnEndThatNobodySawTheMonitorStillRuns) {
    LiveSession session;
    play(session, "start");
    session.take("expect-exit 0");

    session.failed(true);

    EXPECT_EQ(session.take("status 1").wish, LiveWish::Play);
}

TEST(LiveSession, AfterAHangUpThatFailedThePipeMayBeWrittenTo) {
    LiveSession session;
    play(session, "start");
    session.take("hang-up");

    session.failed(true);

    EXPECT_EQ(session.take("status 1").wish, LiveWish::Play);
}

TEST(LiveSession, WhatIsSavedIsAScenarioThatEndsTheMonitor) {
    LiveSession session;
    play(session, "start");
    play(session, "status 41100 # no paper");

    const std::string text = savedOf(session);

    EXPECT_TRUE(holds(text, "\nstart\nstatus 41100 # no paper\nhang-up\nexpect-exit 0\n")) << text;
    EXPECT_TRUE(std::holds_alternative<Scenario>(parseScenario(text)));
}

TEST(LiveSession, AnEndThatWasTypedIsNotAddedAgain) {
    LiveSession session;
    for (const char* line : {"start", "hang-up"})
        play(session, line);

    EXPECT_TRUE(savedOf(session).ends_with("start\nhang-up\nexpect-exit 0\n"));
    play(session, "expect-exit 0");
    EXPECT_TRUE(savedOf(session).ends_with("start\nhang-up\nexpect-exit 0\n"));
}

TEST(LiveSession, AStepThatFailedIsNotSaved) {
    LiveSession session;
    play(session, "start");
    session.take("wait-dialog \"never there\"");
    session.failed(true);

    EXPECT_FALSE(holds(savedOf(session), "never there"));
    EXPECT_FALSE(holds(session.take("history").text, "never there"));
}

TEST(LiveSession, NothingIsSavedWithoutAStartOrWithinARepeatedPart) {
    LiveSession session;
    play(session, "say hello");
    EXPECT_TRUE(std::holds_alternative<ScenarioError>(session.saved()));
    play(session, "start");
    session.take("repeat 2");

    EXPECT_TRUE(std::holds_alternative<ScenarioError>(session.saved()));
}

TEST(LiveSession, AQuestionMarkListsTheKeywordsThatBeginSo) {
    LiveSession session;

    EXPECT_EQ(session.take("docu?").text, "document-start document-start-wide document-end");
    EXPECT_EQ(session.take("xyz?").wish, LiveWish::Refuse);
}

TEST(LiveSession, AQuestionMarkAloneListsEveryKeywordInNarrowLines) {
    LiveSession session;

    const std::string text = " " + session.take("?").text;

    for (const Keyword& keyword : keywords())
        EXPECT_TRUE(holds(text, " " + std::string(keyword.name)) ||
                    holds(text, "\n" + std::string(keyword.name)))
            << keyword.name;
    EXPECT_LT(longestLine(text), 80U);
}

TEST(LiveSession, ControlsAreListedInNarrowLines) {
    LiveSession session;

    EXPECT_LT(longestLine(session.take("press ?").text), 80U);
}

TEST(LiveSession, AQuestionMarkAfterAKeywordTellsWhatMayFollow) {
    LiveSession session;

    EXPECT_EQ(session.take("wait-alerts ?").text,
              "wait-alerts <count> [within=...]\n  count: a number from 0 to 100\n"
              "  within: a number from 1 to 600");
    EXPECT_TRUE(holds(session.take("choose ?").text, "one of none, 1-hour, 4-hours"));
    EXPECT_TRUE(holds(session.take("press ?").text, "a number, or one of:\ncancel ok "));
    EXPECT_TRUE(holds(session.take("type-key ?").text, "shift+tab"));
    EXPECT_TRUE(holds(session.take("oem-hex ?").text, "56 45 4C 4F"));
    EXPECT_TRUE(holds(session.take("known-cartridge ?").text, "illegal, foreign"));
    EXPECT_TRUE(holds(session.take("forget-cartridges ?").text, "changes this system"));
    EXPECT_EQ(session.take("help say").text, session.take("say ?").text);
}

TEST(LiveSession, AQuestionMarkWithinATextIsText) {
    LiveSession session;

    EXPECT_EQ(session.take("say why?").wish, LiveWish::Play);
    session.succeeded();
    EXPECT_EQ(session.take("say \"and now ?\"").wish, LiveWish::Play);
}

TEST(LiveSession, TheNameOfTheFileMayStandInQuotes) {
    LiveSession session;

    const LiveAnswer answer = session.take("save \"C:\\my stories\\new.txt\"");

    EXPECT_EQ(answer.wish, LiveWish::Save);
    EXPECT_EQ(answer.text, "C:\\my stories\\new.txt");
    EXPECT_EQ(session.take("save").wish, LiveWish::Refuse);
}

TEST(LiveSession, NoKeywordHasTheNameOfACommand) {
    LiveSession session;

    for (const char* command : {"help", "history", "save", "quit"})
        EXPECT_EQ(findKeyword(command), nullptr) << command;
    EXPECT_EQ(session.take("quit").wish, LiveWish::Quit);
    EXPECT_EQ(session.take("help").text, liveHelp());
    EXPECT_EQ(session.take("history").text, "no step has been played yet");
}

TEST(LiveSession, TheExampleOfTheHelpCanBeTyped) {
    LiveSession session;
    const std::string help = liveHelp();
    for (std::size_t at = help.find("\n  "); at != std::string::npos; at = help.find("\n  ", at)) {
        at += 3;
        play(session, help.substr(at, help.find('\n', at) - at));
    }

    EXPECT_TRUE(savedOf(session).ends_with("expect-exit 0\n"));
}

}  // namespace
}  // namespace printpath
