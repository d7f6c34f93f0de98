#pragma once

#include "tools/alert_facts/source_names.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

// What people ask about the alerts, found out by letting each alert happen. Texts are UTF-8.
namespace alert_facts {

using TextsByLanguage = std::map<std::string, std::string>;   // by the code of the language
using TextsByRole = std::map<std::string, std::string>;       // "headline", "help" and so on
using TextsOfLanguages = std::map<std::string, TextsByRole>;  // by the code of the language

struct StatusFact {
    std::optional<std::int32_t> first;  // without codes: every status with the subcode
    std::int32_t last = 0;
    std::optional<std::uint32_t> subcode;
    std::string name;
    std::string maskClass;  // the class of AlertMask that hides it, empty: only all of them do
};

// A control, or a key that no control has.
struct ActionFact {
    std::string control;
    TextsByLanguage texts;  // on it; none for a key
    std::vector<std::string> keys;
    std::string does;  // a sentence without its end
};

// What differs from the usual case, the K7400 family on a system that is not Chinese.
struct VariantFact {
    std::string when;
    TextsOfLanguages texts;  // those that differ
};

struct AlertFact {
    std::string id;
    std::optional<int> type;  // none for the cartridge check, which is no alert of a status
    std::string topic;
    std::string headline;  // in English
    std::map<std::string, int> textIds;
    TextsOfLanguages texts;
    std::vector<StatusFact> statuses;
    std::string printers;
    std::string mask;
    std::string maskClass;
    std::uint32_t maskBit = 0;
    std::vector<std::string> rules;
    std::vector<ActionFact> actions;
    std::vector<VariantFact> variants;
    std::vector<std::string> pictures;
};

struct Topic {
    std::string id;
    std::string name;
};

struct Facts {
    std::vector<Topic> topics;
    std::vector<Language> languages;
    std::vector<AlertFact> alerts;    // in the order of topics and of the types
    std::vector<std::string> always;  // what holds for all alerts of a status
    std::vector<StatusFact> noAlert;  // named statuses that open none
};

// Reads the names from the sources below `root`. Throws std::runtime_error for a fact that is
// missing, such as an alert type that no status opens.
[[nodiscard]] Facts collectFacts(const std::filesystem::path& root);

}  // namespace alert_facts
