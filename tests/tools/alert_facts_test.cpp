#include "tools/alert_facts/facts.h"
#include "tools/alert_facts/pages.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using alert_facts::ActionFact;
using alert_facts::AlertFact;
using alert_facts::Facts;
using alert_facts::StatusFact;

const std::filesystem::path kSources = BEAMLINE_SOURCES;

// Found out once for all tests, because each alert is tried some hundred times.
const Facts& facts() {
    static const Facts all = alert_facts::collectFacts(kSources);
    return all;
}

const AlertFact& alert(const std::string& id) {
    const auto found = std::find_if(facts().alerts.begin(), facts().alerts.end(),
                                    [&id](const AlertFact& fact) { return fact.id == id; });
    if (found == facts().alerts.end()) throw std::runtime_error("no alert " + id);
    return *found;
}

// What a control of an alert does, or a key that stands alone. Nothing else does the same.
std::string doneBy(const AlertFact& alert, const std::string& controlOrKey) {
    for (const ActionFact& action : alert.actions) {
        if (action.control == controlOrKey) return action.does;
        if (std::count(action.keys.begin(), action.keys.end(), controlOrKey) != 0)
            return action.does;
    }
    return {};
}

int placesOf(const std::vector<StatusFact>& statuses, int code) {
    return static_cast<int>(
        std::count_if(statuses.begin(), statuses.end(), [code](const StatusFact& fact) {
            return fact.first && code >= *fact.first && code <= fact.last;
        }));
}

std::set<std::string> rolesIn(const AlertFact& alert, const std::string& language) {
    std::set<std::string> roles;
    for (const auto& [role, text] : alert.texts.at(language)) {
        if (!text.empty()) roles.insert(role);
    }
    return roles;
}

using Strings = std::vector<std::string>;

TEST(AlertFacts, TellAStatusForEveryTypeOfAlert) {
    for (const auto& [number, name] : alert_facts::readAlertNames(kSources)) {
        int statuses = 0;
        for (const AlertFact& fact : facts().alerts) {
            if (fact.type == number) statuses += static_cast<int>(fact.statuses.size());
        }
        EXPECT_GT(statuses, 0) << name;
    }
}

TEST(AlertFacts, HaveEveryNamedStatusAtOneAlertOrAmongThoseWithoutAnAlert) {
    const alert_facts::StatusNames names = alert_facts::readStatusNames(kSources);
    std::vector<int> codes;
    for (const auto& [code, name] : names.codes)
        codes.push_back(code);
    for (const auto& [code, name] : names.firstOfRange)
        codes.push_back(code);
    for (const int code : codes) {
        int places = placesOf(facts().noAlert, code);
        for (const AlertFact& fact : facts().alerts)
            places += placesOf(fact.statuses, code);
        EXPECT_EQ(places, 1) << code;
    }
    EXPECT_EQ(codes.size(), 50U);
}

TEST(AlertFacts, NameStatusesInTheWordsOfTheCode) {
    EXPECT_EQ(alert("toner-low").statuses.front().name, "toner low");
    EXPECT_EQ(alert("paper-out").statuses.front().name, "paper out");
    EXPECT_EQ(alert("paper-out").statuses.front().last, 41199);
    EXPECT_EQ(alert("manual-feed").statuses.front().name, "manual feed");
    ASSERT_EQ(facts().noAlert.size(), 1U);
    EXPECT_EQ(facts().noAlert.front().name, "control panel message");
}

TEST(AlertFacts, GiveEveryTopicAnAlertAndEveryAlertATopic) {
    std::set<std::string> topics;
    for (const auto& topic : facts().topics)
        topics.insert(topic.id);
    std::set<std::string> used;
    for (const AlertFact& fact : facts().alerts)
        used.insert(fact.topic);
    EXPECT_EQ(topics, used);
}

TEST(AlertFacts, HaveTheSameTextsInEveryLanguage) {
    ASSERT_EQ(facts().languages.size(), 65U);
    for (const AlertFact& fact : facts().alerts) {
        for (const auto& language : facts().languages)
            EXPECT_EQ(rolesIn(fact, language.code), rolesIn(fact, "en"))
                << fact.id << language.code;
    }
    EXPECT_EQ(alert("toner-low").texts.at("de").at("headline"), "Der Toner geht zur Neige.");
}

TEST(AlertFacts, PutEveryPictureOfTheGalleryAtOneAlertAndLeaveNoAlertWithoutOne) {
    std::multiset<std::string> placed;
    for (const AlertFact& fact : facts().alerts) {
        EXPECT_FALSE(fact.pictures.empty()) << fact.id;
        placed.insert(fact.pictures.begin(), fact.pictures.end());
    }
    std::multiset<std::string> taken;
    for (const auto& picture : alert_facts::readPictures(kSources))
        taken.insert(picture.name);
    EXPECT_EQ(placed, taken);
}

TEST(AlertFacts, TellTheIdsOfTheTexts) {
    const std::map<std::string, int> expected = {{"title", 107}, {"headline", 284}};
    for (const auto& [role, id] : expected)
        EXPECT_EQ(alert("toner-low").textIds.at(role), id) << role;
    EXPECT_EQ(alert("paper-out").textIds.at("help"), 265);
}

TEST(AlertFacts, TellWhichClassOfAlertMaskHidesAnAlert) {
    EXPECT_EQ(alert("toner-low").maskBit, 0U);
    EXPECT_EQ(alert("toner-out").maskClass, "information");
    EXPECT_EQ(alert("toner-out").maskBit, 2U);
    EXPECT_EQ(alert("paper-out").maskClass, "errors");
    EXPECT_EQ(alert("paper-out").maskBit, 1U);
    EXPECT_EQ(alert("welcome").maskBit, 0U);
}

TEST(AlertFacts, TellTheRuleOfAnAlertOfTheJob) {
    EXPECT_EQ(alert("paper-out").rules,
              (Strings{"Comes each time that the printer reports it.",
                       "Does not come while it is open.", "Closes when the document ends."}));
}

TEST(AlertFacts, TellTheRuleOfASnoozedAlert) {
    EXPECT_EQ(
        alert("toner-low").rules,
        (Strings{"Comes each time that the printer reports it, but not while it rests for this "
                 "cartridge: for 14 days from its opening, or for the time that is chosen in it.",
                 "Does not come while it is open.",
                 "Does not come before the printer has told which cartridge it has.",
                 "Stays when the document ends."}));
}

TEST(AlertFacts, TellTheRuleOfAnAlertThatComesOnce) {
    EXPECT_EQ(alert("toner-out").rules.front(),
              "Comes once for each cartridge: it rests for 20 years.");
    EXPECT_EQ(alert("illegal-cartridge").rules.front(), "Comes once for each cartridge.");
}

TEST(AlertFacts, TellWhichAlertsShareTheirOnce) {
    EXPECT_EQ(alert("cartridge-not-recognized").rules.at(1),
              "Does not come for a cartridge that has had “There is a problem with the memory of "
              "the toner cartridge”.");
    EXPECT_NE(alert("welcome").rules.at(1).find("“The printer does not recognize the toner "
                                                "cartridge”."),
              std::string::npos);
}

TEST(AlertFacts, TellWhatControlsAndKeysDo) {
    EXPECT_EQ(doneBy(alert("paper-out"), "“OK” button"), "closes the alert");
    EXPECT_EQ(doneBy(alert("paper-out"), "Enter"), "closes the alert");
    EXPECT_EQ(doneBy(alert("paper-out"), "“Help” button"), "shows the help");
    EXPECT_EQ(doneBy(alert("paper-out"), "Alt+H"), "shows the help");
    EXPECT_EQ(doneBy(alert("manual-duplex"), "“OK” button"),
              "presses “go” on the printer, closes the alert");
    EXPECT_EQ(doneBy(alert("toner-low"), "“Return and recycle” button"),
              "opens https://www.corvane.example/go/recycle");
    EXPECT_EQ(
        doneBy(alert("toner-low"), "“OK” button"),
        "says “Choose when you want to be reminded again, and then click OK.” while no time is "
        "chosen");
    EXPECT_EQ(doneBy(alert("toner-low"), "Esc"),
              "closes the alert, ends its rest, so that it may come again at once");
}

TEST(AlertFacts, TellOfALinkThatOnlyOneSystemShows) {
    EXPECT_EQ(doneBy(alert("welcome"),
                     "“Check that this cartridge is genuine” link, on a Chinese "
                     "(Simplified) system"),
              "opens the cartridge check");
    EXPECT_EQ(doneBy(alert("fax-in-companion"), "“Open the fax in Orrery” link"),
              "starts the companion Orrery");
}

TEST(AlertFacts, TellWhatTheCartridgeCheckDoes) {
    const AlertFact& check = alert("cartridge-check");
    EXPECT_EQ(doneBy(check, "“Submit” button"),
              "opens https://validate.corvane.example/cgi-bin/jumpstation.py with the values of "
              "cartridge and printer, ends the monitor");
    EXPECT_EQ(doneBy(check, "Alt+D in English"), "closes the window");
    EXPECT_EQ(doneBy(check, "Esc"), "closes the window");
    EXPECT_EQ(doneBy(check, "“Learn more” link"), "opens the details");
    EXPECT_EQ(doneBy(alert("cartridge-check-details"), "“Privacy statement” link"),
              "opens https://www.corvane.example/go/privacy");
    EXPECT_EQ(check.actions.size(), 4U);
}

TEST(AlertFacts, TellTheReminderTimes) {
    EXPECT_EQ(
        doneBy(alert("toner-very-low"), "“Remind me again:” list"),
        "then the OK button closes the alert, which rests for 1 hour, 4 hours, 1 day, 2 days, "
        "3 days, 7 days, 14 days, 20 years");
}

TEST(AlertFacts, TellWhereAnAlertIsDifferent) {
    ASSERT_EQ(alert("welcome").variants.size(), 1U);
    EXPECT_EQ(alert("welcome").variants.front().when, "On a Chinese (Simplified) system");
    ASSERT_EQ(alert("paper-out").variants.size(), 1U);
    EXPECT_EQ(alert("paper-out").variants.front().when, "Outside the K7400 family");
    ASSERT_EQ(alert("generic-status-duplex-jam").variants.size(), 1U);
    EXPECT_EQ(alert("generic-status-duplex-jam").variants.front().when, "With status 42004");
    EXPECT_TRUE(alert("toner-low").variants.empty());
}

TEST(AlertFacts, TellWhatHoldsForAllAlerts) {
    EXPECT_EQ(facts().always,
              (Strings{"None comes while the printer's data value “Status” is 0.",
                       "A status with subcode 19 also presses “cancel” on the printer.",
                       "No alert that is open opens a second time."}));
}

TEST(AlertFacts, TellThatASubcodeMayComeWithAnError) {
    EXPECT_EQ(alert("welcome").mask,
              "Hidden only when all alerts are switched off. By its subcode it also comes with the "
              "status of an error, and is then hidden with the class of errors.");
}

TEST(AlertFacts, AreAnObjectForThePage) {
    const auto page = nlohmann::json::parse(jsonOf(facts()));

    EXPECT_EQ(page["topics"].size(), 7U);
    EXPECT_EQ(page["alerts"].size(), facts().alerts.size());
    const auto& first = page["alerts"][0];
    EXPECT_EQ(first["id"], "paper-out");
    EXPECT_EQ(first["type"], 0);
    EXPECT_EQ(first["texts"]["en"]["headline"], first["headline"]);
    EXPECT_EQ(first["statuses"][0]["code"], 41100);
    EXPECT_EQ(first["alertMask"]["bit"], 1);
    EXPECT_EQ(first["help"], first["texts"]["en"]["help"]);
    EXPECT_TRUE(page["alerts"].back()["type"].is_null());
}

TEST(AlertFacts, SayWhichSourceIsMissing) {
    try {
        static_cast<void>(alert_facts::collectFacts("no such folder"));
        FAIL() << "facts without sources";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(),
                  std::string("no such folder/printer/status_codes.h cannot be read"));
    }
}

TEST(AlertsPage, IsWhatTheProgramDoes) {
    std::ifstream file(kSources / "docs/alerts.md");
    const std::string page{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};

    EXPECT_TRUE(page == tableOf(facts()))
        << "docs/alerts.md is not what the program does. This writes it anew: ./run alerts";
}

}  // namespace
