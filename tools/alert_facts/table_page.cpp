#include "tools/alert_facts/pages.h"

#include "tools/alert_facts/sentences.h"

namespace alert_facts {

namespace {

// A cell has one line, and bars divide cells.
std::string cell(const std::string& text) {
    std::string line;
    for (const char letter : text) {
        if (letter == '\n') {
            line += "<br>";
        } else if (letter == '|') {
            line += "\\|";
        } else {
            line += letter;
        }
    }
    return line;
}

template <typename Items, typename Convert>
std::string lines(const Items& items, Convert convert) {
    std::vector<std::string> texts;
    texts.reserve(items.size());
    for (const auto& item : items)
        texts.push_back(convert(item));
    return joined(texts, "\n");
}

std::string statusText(const StatusFact& fact) {
    std::string text;
    if (fact.first) text = std::to_string(*fact.first);
    if (fact.first && fact.last != *fact.first) text += " to " + std::to_string(fact.last);
    if (fact.subcode) text += "subcode " + std::to_string(*fact.subcode);
    return text + " " + fact.name;
}

std::string actionText(const ActionFact& fact) {
    std::string who = fact.control;
    if (!fact.keys.empty()) {
        const std::string keys = joined(fact.keys, ", ");
        who = who.empty() ? keys : who + " (" + keys + ")";
    }
    return who + ": " + fact.does + ".";
}

void addCell(std::string& row, const std::string& text) {
    row += ' ';
    row += cell(text);
    row += " |";
}

std::string placeText(const AlertFact& fact) {
    std::vector<std::string> sentences = {fact.printers};
    for (const VariantFact& variant : fact.variants) {
        for (const auto& [role, text] : variant.texts.at("en"))
            sentences.push_back(joined({variant.when, ", ", role, ": “", text, "”"}, ""));
    }
    if (!fact.mask.empty()) sentences.push_back(fact.mask);
    return joined(sentences, "\n");
}

std::string rowOf(const AlertFact& fact) {
    const TextsByRole& english = fact.texts.at("en");
    const auto help = english.find("help");
    std::string name = joined({"**", fact.headline, "**\n`", fact.id, "`"}, "");
    if (fact.type) name += ", type " + std::to_string(*fact.type);
    std::string row = "|";
    addCell(row, name);
    addCell(row, lines(fact.statuses, statusText));
    addCell(row, placeText(fact));
    addCell(row, joined(fact.rules, "\n"));
    addCell(row, lines(fact.actions, actionText));
    addCell(row, help != english.end() ? help->second : "");
    return row + "\n";
}

}  // namespace

std::string tableOf(const Facts& facts) {
    std::string page =
        "<!-- Made by ./run alerts from the program itself; do not edit. -->\n"
        "# Every alert\n\n"
        "What makes each alert appear, what can hide it, why it does not come a second time, and "
        "what its\ncontrols do. [Decision 33](decisions/0033-facts-come-from-trying.md) says where "
        "these facts come from.\nThe texts are the English ones; `./run gallery` shows them in "
        "every language.\n";
    for (const Topic& topic : facts.topics) {
        page += joined({"\n## ", topic.name, "\n\n"}, "");
        page +=
            "| alert | statuses | where, and what hides it | rule | controls and keys | help says "
            "|\n";
        page += "|---|---|---|---|---|---|\n";
        for (const AlertFact& alert : facts.alerts) {
            if (alert.topic == topic.id) page += rowOf(alert);
        }
    }
    page += "\n## What holds for all of them\n\n";
    page += lines(facts.always, [](const std::string& fact) { return joined({"-", fact}, " "); });
    page += "\n\n## Statuses that have a name and no alert\n\n";
    page += lines(facts.noAlert, [](const StatusFact& fact) {
        return joined({"-", statusText(fact)}, " ");
    });
    return page + "\n";
}

}  // namespace alert_facts
