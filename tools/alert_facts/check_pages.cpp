#include "tools/alert_facts/check_pages.h"

#include "strings/string_ids.h"
#include "tools/alert_facts/sentences.h"
#include "tools/alert_facts/topics.h"
#include "tools/alert_facts/trials.h"
#include "ui/resource_ids.h"
#include "ui/validation_texts.h"

#include <span>

namespace alert_facts {

namespace {

struct Page {
    const char* id;
    std::uint32_t title;
    std::span<const ControlText> rows;
    const char* opening;
};

std::string doneBy(CheckAction action) {
    std::vector<std::string> parts;
    const Effects effects = effectsOf(action);
    for (const std::wstring& address : effects.addresses) {
        const std::string whole = utf8(address);
        const std::size_t query = whole.find('?');
        parts.push_back("opens " + whole.substr(0, query));
        if (query != std::string::npos) parts.back() += " with the values of cartridge and printer";
    }
    if (effects.endsMonitor) parts.emplace_back("ends the monitor");
    if (action == CheckAction::ShowDetails) parts.emplace_back("opens the details");
    if (action == CheckAction::Close) parts.emplace_back("closes the window");
    return joined(parts, ", ");
}

// The letter after the mark in an English caption.
void addLetter(ActionFact& action, const std::wstring& caption) {
    const std::size_t mark = caption.find(L'&');
    if (mark == std::wstring::npos) return;
    action.keys.push_back("Alt+" + utf8(caption.substr(mark + 1, 1)) + " in English");
}

AlertFact factOf(const Page& page, const std::map<std::string, TextsById>& languages) {
    AlertFact fact;
    fact.id = page.id;
    fact.topic = kCheckTopic;
    fact.printers = "All printers, on a Chinese (Simplified) system only.";
    fact.rules = {page.opening};
    fact.textIds["title"] = static_cast<int>(page.title);
    for (const auto& [language, texts] : languages)
        fact.texts[language]["title"] = utf8(texts.at(page.title));
    const TextsById& english = languages.at("en");
    for (const ControlText& row : page.rows) {
        if (row.action != CheckAction::None) {
            ActionFact action;
            for (const auto& [language, texts] : languages)
                action.texts[language] = utf8(captionOf(texts.at(row.text)));
            action.control = "“" + action.texts.at("en") + "” " +
                             (row.style == TextStyle::Link ? "link" : "button");
            action.does = doneBy(row.action);
            addLetter(action, english.at(row.text));
            fact.actions.push_back(std::move(action));
            continue;
        }
        const std::string role = fact.textIds.contains("headline") ? "message" : "headline";
        fact.textIds.try_emplace(role, static_cast<int>(row.text));
        for (const auto& [language, texts] : languages) {
            std::string& said = fact.texts[language][role];
            said += (said.empty() ? "" : "\n") + utf8(texts.at(row.text));
        }
    }
    const std::string cancel = doneBy(checkAction(page.rows, IDC_CHECK_CANCEL));
    fact.actions.push_back({"", {}, {"Esc", "the window's close box"}, cancel});
    fact.headline = fact.texts.at("en").at("title");
    return fact;
}

}  // namespace

std::vector<AlertFact> checkPages(const std::map<std::string, TextsById>& texts,
                                  const std::vector<Picture>& pictures) {
    const Page pages[] = {{"cartridge-check", IDS_CHECK_TITLE, cartridgeCheckTexts(),
                           "Opens with the link of the alert of a new cartridge."},
                          {"cartridge-check-details", IDS_DETAILS_TITLE,
                           cartridgeCheckDetailTexts(), "Opens with the link of the check."}};
    std::vector<AlertFact> facts;
    for (const Page& page : pages) {
        facts.push_back(factOf(page, texts));
        const int depth = static_cast<int>(facts.size());
        for (const Picture& picture : pictures) {
            if (picture.pagesDeep == depth) facts.back().pictures.push_back(picture.name);
        }
    }
    return facts;
}

}  // namespace alert_facts
