#include "tools/alert_facts/pages.h"

#include "tools/alert_facts/sentences.h"

#include <nlohmann/json.hpp>

namespace alert_facts {

namespace {

using Json = nlohmann::ordered_json;

Json statusOf(const StatusFact& fact) {
    Json status = {{"name", fact.name}};
    if (fact.first) {
        status["code"] = *fact.first;
        status["last"] = fact.last;
    }
    if (fact.subcode) status["subcode"] = *fact.subcode;
    return status;
}

template <typename Items, typename Convert>
Json listOf(const Items& items, Convert convert) {
    Json list = Json::array();
    for (const auto& item : items)
        list.push_back(convert(item));
    return list;
}

Json actionOf(const ActionFact& fact) {
    return {
        {"control", fact.control}, {"text", fact.texts}, {"keys", fact.keys}, {"does", fact.does}};
}

Json alertOf(const AlertFact& fact) {
    Json alert = {{"id", fact.id},           {"type", nullptr},
                  {"topic", fact.topic},     {"headline", fact.headline},
                  {"textIds", fact.textIds}, {"texts", fact.texts}};
    if (fact.type) alert["type"] = *fact.type;
    alert["statuses"] = listOf(fact.statuses, statusOf);
    alert["printers"] = fact.printers;
    alert["alertMask"] = {{"class", fact.maskClass}, {"bit", fact.maskBit}, {"text", fact.mask}};
    alert["rule"] = joined(fact.rules, " ");
    alert["rules"] = fact.rules;
    alert["actions"] = listOf(fact.actions, actionOf);
    const TextsByRole& english = fact.texts.at("en");
    const auto help = english.find("help");
    alert["help"] = help != english.end() ? help->second : "";
    alert["variants"] = listOf(fact.variants, [](const VariantFact& variant) {
        return Json{{"when", variant.when}, {"texts", variant.texts}};
    });
    alert["pictures"] = fact.pictures;
    return alert;
}

}  // namespace

std::string jsonOf(const Facts& facts) {
    Json page;
    page["topics"] = listOf(facts.topics, [](const Topic& topic) {
        return Json{{"id", topic.id}, {"name", topic.name}};
    });
    page["languages"] = listOf(facts.languages, [](const Language& language) {
        return Json{{"code", language.code}, {"english", language.english}, {"own", language.own}};
    });
    page["alerts"] = listOf(facts.alerts, alertOf);
    page["always"] = facts.always;
    page["noAlert"] = listOf(facts.noAlert, statusOf);
    return page.dump() + "\n";
}

}  // namespace alert_facts
