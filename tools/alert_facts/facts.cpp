#include "tools/alert_facts/facts.h"

#include "printer/alert_types.h"
#include "printer/status_codes.h"
#include "tools/alert_facts/check_pages.h"
#include "tools/alert_facts/sentences.h"
#include "tools/alert_facts/topics.h"
#include "tools/alert_facts/trials.h"
#include "ui/default_status_dialog.h"
#include "ui/localized_text.h"
#include "ui/resource_ids.h"

#include <algorithm>
#include <cctype>
#include <cwctype>
#include <set>
#include <stdexcept>
#include <tuple>

namespace alert_facts {

namespace {

// Beyond the greatest code that a status of this printer has.
constexpr std::int32_t kEndOfCodes = 131072;
constexpr std::uint32_t kEndOfSubcodes = 256;
constexpr std::int32_t kNoStatus = 0;  // a code that no alert has

// An alert on the page: a type, and among the generic ones those with the same message.
struct Key {
    AlertType type = AlertType::None;
    int message = 0;

    friend bool operator<(const Key& left, const Key& right) {
        return std::tie(left.type, left.message) < std::tie(right.type, right.message);
    }
    friend bool operator==(const Key&, const Key&) = default;
};

Key keyOf(WindowHandle window) {
    const auto& dialog = dynamic_cast<DefaultStatusDialog&>(*headless::find(window)->dialog);
    Key key{dialog.dialogType(), 0};
    if (key.type == AlertType::GenericStatus)
        key.message = idOf(headless::control(window, IDC_ALERT_MESSAGE).text);
    return key;
}

// The alert that a status opens with a new cartridge; afterwards the monitor is as it was before.
Key opened(SimulatedMonitor& monitor, std::int32_t status,
           std::uint32_t subcode = tern::kDeviceStatus) {
    const WindowHandle window = monitor.report(status, subcode);
    if (window == nullptr) return {};
    const Key key = keyOf(window);
    headless::closeBox(window);
    monitor.insertNewCartridge();
    return key;
}

bool covers(const std::vector<StatusFact>& facts, std::int32_t status) {
    return std::any_of(facts.begin(), facts.end(), [status](const StatusFact& fact) {
        return fact.first && status >= *fact.first && status <= fact.last;
    });
}

class Collector {
public:
    explicit Collector(const std::filesystem::path& root)
        : _names(readStatusNames(root)),
          _alertNames(readAlertNames(root)),
          _pictures(readPictures(root)),
          _english(textsOf(platform::LanguageId{0x0409})) {
        _facts.topics = topics();
        _facts.languages = readLanguages(root);
        for (const Language& language : _facts.languages)
            _texts[language.code] = textsOf(language.number);
    }

    Facts collect() {
        sweep();
        for (const auto& [key, statuses] : _statuses)
            _reports[key] = reportOf(statuses);
        for (const auto& [key, report] : _reports)
            _facts.alerts.push_back(alertOf(key, report));
        for (AlertFact& page : checkPages(_texts, _pictures))
            _facts.alerts.push_back(std::move(page));
        sortByTopic();
        addAlways();
        return std::move(_facts);
    }

private:
    // Every status is reported once, so nothing depends on a list of those that matter.
    void sweep() {
        SimulatedMonitor monitor;
        Key last;
        for (std::int32_t status = 0; status < kEndOfCodes; ++status) {
            const Key key = opened(monitor, status);
            const auto named = _names.codes.find(status);
            if (key.type == AlertType::None) {
                if (named != _names.codes.end())
                    _facts.noAlert.push_back({status, status, {}, named->second, {}});
            } else if (const auto range = _names.firstOfRange.find(status);
                       range != _names.firstOfRange.end()) {
                _statuses[key].push_back({status, status, {}, range->second, {}});
            } else if (named == _names.codes.end() && key == last) {
                _statuses[key].back().last = status;
            } else {
                const std::string name = named != _names.codes.end() ? named->second : "";
                _statuses[key].push_back({status, status, {}, name, {}});
            }
            last = key;
        }
        for (std::uint32_t subcode = 0; subcode < kEndOfSubcodes; ++subcode) {
            const Key key = opened(monitor, kNoStatus, subcode);
            if (key.type == AlertType::None) continue;
            _statuses[key].push_back(
                {{}, 0, subcode, "any status without an alert of its own", {}});
        }
    }

    // The report with which the gallery shows the alert, else the first one that opens it.
    [[nodiscard]] Report reportOf(const std::vector<StatusFact>& statuses) const {
        for (const Picture& picture : _pictures) {
            if (covers(statuses, picture.status))
                return {picture.status, tern::kDeviceStatus, picture.medium};
        }
        if (!statuses.front().first) throw std::runtime_error("an alert has no status of its own");
        return {*statuses.front().first, tern::kDeviceStatus, ""};
    }

    AlertFact alertOf(const Key& key, const Report& report) {
        AlertFact alert;
        const int number = static_cast<int>(key.type);
        alert.type = number;
        alert.id = _alertNames.at(number);
        alert.topic = topicOf(key.type, report.status);
        alert.statuses = _statuses[key];
        if (key.message != 0) {
            std::string name = _names.codes.at(report.status);
            std::replace(name.begin(), name.end(), ' ', '-');
            alert.id += "-" + name;
        }
        const Look ids = *lookOf(report);
        for (const auto& [role, text] : ids.roles) {
            if (idOf(text) != 0) alert.textIds[role] = idOf(text);
        }
        std::map<std::string, Look> looks = looksOf(report, {});
        for (const auto& [language, look] : looks)
            alert.texts[language] = textsOfLook(look);
        alert.headline = headlineOf(alert.texts.at(kEnglish), alert.statuses);
        addPlaces(alert, report, ids);
        addMask(alert);
        addRules(alert, key, report);
        addActions(alert, report, ids, looks);
        for (const Picture& picture : _pictures) {
            if (picture.pagesDeep == 0 && covers(alert.statuses, picture.status))
                alert.pictures.push_back(picture.name);
        }
        return alert;
    }

    [[nodiscard]] std::map<std::string, Look> looksOf(const Report& report, Setup setup) const {
        std::map<std::string, Look> looks;
        for (const auto& [language, texts] : _texts) {
            setup.texts = &texts;
            looks[language] = *lookOf(report, setup);
        }
        return looks;
    }

    static TextsByRole textsOfLook(const Look& look) {
        TextsByRole texts;
        for (const auto& [role, text] : look.roles)
            texts[role] = utf8(text);
        return texts;
    }

    // An alert that has only details goes by the name of its status.
    static std::string headlineOf(const TextsByRole& texts,
                                  const std::vector<StatusFact>& statuses) {
        for (const char* const role : {"headline", "duplexTitle", "message"}) {
            const auto found = texts.find(role);
            if (found != texts.end()) return inOneLine(found->second);
        }
        std::string name = statuses.front().name;
        name.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
        return name;
    }

    // Where the alert comes, and how it differs there.
    void addPlaces(AlertFact& alert, const Report& report, const Look& usual) const {
        Setup other;
        other.familyPrinter = false;
        alert.printers = "All printers.";
        const std::optional<Look> elsewhere = lookOf(report, other);
        if (!elsewhere) {
            alert.printers = "Printers of the K7400 family only.";
        } else if (elsewhere->roles != usual.roles) {
            alert.printers =
                "All printers; those outside the K7400 family have another text and "
                "another picture.";
            addVariant(alert, "Outside the K7400 family", report, other);
        } else if (elsewhere->pictures != usual.pictures) {
            alert.printers = "All printers; those outside the K7400 family have another picture.";
        }
        const Setup chinese = chineseSystem();
        if (lookOf(report, chinese)->roles != usual.roles)
            addVariant(alert, kOnChineseSystem, report, chinese);
        for (const StatusFact& status : alert.statuses) {
            if (!status.first) continue;
            const Report same{*status.first, tern::kDeviceStatus, report.medium};
            if (lookOf(same)->roles != usual.roles)
                addVariant(alert, "With status " + std::to_string(same.status), same, {});
        }
    }

    void addVariant(AlertFact& alert, const std::string& when, const Report& report,
                    const Setup& setup) const {
        VariantFact variant{when, {}};
        for (const auto& [language, look] : looksOf(report, setup)) {
            TextsByRole texts = textsOfLook(look);
            const TextsByRole& usual = alert.texts.at(language);
            std::erase_if(texts, [&usual](const auto& text) {
                const auto found = usual.find(text.first);
                return found != usual.end() && found->second == text.second;
            });
            variant.texts[language] = std::move(texts);
        }
        alert.variants.push_back(std::move(variant));
    }

    static void addMask(AlertFact& alert) {
        std::set<std::uint32_t> bits;
        std::string note;
        for (StatusFact& status : alert.statuses) {
            const std::uint32_t bit = status.first
                                          ? maskBitsOf({*status.first, tern::kDeviceStatus, ""})
                                          : maskBitsOf({kNoStatus, *status.subcode, ""});
            status.maskClass = bit != 0 ? maskClassOf(bit) : "";
            bits.insert(bit);
            if (status.first) continue;
            const std::uint32_t high = maskBitsOf({kEndOfCodes - 1, *status.subcode, ""});
            if (high == bit) continue;
            note =
                " By its subcode it also comes with the status of an error, and is then hidden "
                "with "
                "the class of " +
                maskClassOf(high) + ".";
        }
        if (bits.size() != 1) throw std::runtime_error(alert.id + " has several classes");
        alert.maskBit = *bits.begin();
        alert.maskClass = alert.statuses.front().maskClass;
        alert.mask = alert.maskBit == 0
                         ? "Hidden only when all alerts are switched off."
                         : "Hidden when the class of " + alert.maskClass +
                               " is switched off (AlertMask without " +
                               std::to_string(alert.maskBit) + "), or all classes are.";
        alert.mask += note;
    }

    void addRules(AlertFact& alert, const Key& key, const Report& report) const {
        const Rules rules = rulesOf(report);
        if (!rules.againForNew) throw std::runtime_error(alert.id + " comes once in a lifetime");
        const std::string rest = rules.restHours > 0 ? hoursText(rules.restHours) : "";
        if (!rules.again) {
            alert.rules.push_back("Comes once for each cartridge" +
                                  (rest.empty() ? "." : ": it rests for " + rest + "."));
            addOthers(alert, key, report);
        } else {
            alert.rules.push_back(
                rest.empty()
                    ? "Comes each time that the printer reports it."
                    : "Comes each time that the printer reports it, but not while it "
                      "rests for this cartridge: for " +
                          rest + " from its opening, or for the time that is chosen in it.");
        }
        if (!rules.twice) alert.rules.push_back("Does not come while it is open.");
        if (!rules.withoutCartridge)
            alert.rules.push_back(
                "Does not come before the printer has told which cartridge it has.");
        alert.rules.push_back(rules.staysAfterDocument ? "Stays when the document ends."
                                                       : "Closes when the document ends.");
    }

    void addOthers(AlertFact& alert, const Key& key, const Report& report) const {
        std::vector<std::string> others;
        for (const auto& [other, before] : _reports) {
            if (other == key || comesAfter(report, before)) continue;
            Setup setup;
            setup.texts = &_english;
            const TextsByRole texts = textsOfLook(*lookOf(before, setup));
            std::string headline = headlineOf(texts, _statuses.at(other));
            if (headline.ends_with('.')) headline.pop_back();  // the sentence around it goes on
            others.push_back("“" + headline + "”");
        }
        if (others.empty()) return;
        alert.rules.push_back("Does not come for a cartridge that has had " +
                              joined(others, " or ") + ".");
    }

    // What the user's step brings about, as a sentence.
    [[nodiscard]] std::string done(const AlertFact& alert, const Report& report, const Step& step,
                                   const Setup& setup = {}) const {
        const Effects untouched = effectsOf(report, [](WindowHandle) {});
        const auto help = alert.textIds.find("help");
        return sentence(effectsOf(report, step, setup), untouched,
                        help != alert.textIds.end() ? help->second : 0, _english);
    }

    void addActions(AlertFact& alert, const Report& report, const Look& ids,
                    const std::map<std::string, Look>& looks) const {
        for (const auto& [control, text] : ids.controls)
            addControl(alert, report, {}, control, looks);
        if (!ids.choices.empty()) alert.actions.push_back(choicesOf(report, ids, looks, alert));
        addKeys(alert, report);
        // So far nothing was chosen; the list has an action of its own.
        if (!ids.choices.empty()) actionOf(alert, "Enter").does += " while no time is chosen";
        const Setup chinese = chineseSystem();
        const Look there = *lookOf(report, chinese);
        for (const auto& [control, text] : there.controls) {
            if (ids.controls.contains(control)) continue;
            addControl(alert, report, chinese, control, looksOf(report, chinese));
            alert.actions.back().control += ", on a Chinese (Simplified) system";
        }
    }

    static ActionFact& actionOf(AlertFact& alert, const std::string& key) {
        const auto has = [&key](const ActionFact& action) {
            return std::count(action.keys.begin(), action.keys.end(), key) != 0;
        };
        return *std::find_if(alert.actions.begin(), alert.actions.end(), has);
    }

    void addControl(AlertFact& alert, const Report& report, const Setup& setup, int control,
                    const std::map<std::string, Look>& looks) const {
        ActionFact action;
        for (const auto& [language, look] : looks)
            action.texts[language] = utf8(captionOf(look.controls.at(control)));
        const Look& english = looks.at(kEnglish);
        action.control = "“" + inOneLine(action.texts.at(kEnglish)) + "” " +
                         (english.isLink.at(control) ? "link" : "button");
        action.does = done(
            alert, report, [control](WindowHandle window) { headless::press(window, control); },
            setup);
        if (action.does.empty()) throw std::runtime_error(alert.id + ": a control does nothing");
        if (control == english.defaultButton) action.keys.emplace_back("Enter");
        alert.actions.push_back(std::move(action));
    }

    void addKeys(AlertFact& alert, const Report& report) const {
        const auto add = [&](const std::string& key, const Step& step) {
            addKey(alert, key, done(alert, report, step));
        };
        add("Esc", &headless::pressEscape);
        add("the window's close box", &headless::closeBox);
        for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
            const std::string name(1, static_cast<char>(letter));
            const auto small = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(letter)));
            add(name, [small](WindowHandle window) { headless::typeKey(window, small); });
            add("Shift+" + name,
                [letter](WindowHandle window) { headless::typeKey(window, letter); });
            add("Alt+" + name,
                [small](WindowHandle window) { headless::typeWithAlt(window, small); });
        }
    }

    // A key that does the same as a control belongs to it.
    static void addKey(AlertFact& alert, const std::string& key, const std::string& does) {
        if (does.empty()) return;
        for (ActionFact& action : alert.actions) {
            if (action.does != does) continue;
            action.keys.push_back(key);
            return;
        }
        alert.actions.push_back({"", {}, {key}, does});
    }

    // The list of reminder times: each of them is chosen and confirmed.
    static ActionFact choicesOf(const Report& report, const Look& ids,
                                const std::map<std::string, Look>& looks, const AlertFact& alert) {
        ActionFact action;
        action.control = "“" + alert.texts.at(kEnglish).at("reminderLabel") + "” list";
        for (const auto& [language, look] : looks) {
            std::vector<std::string> choices;
            for (const std::wstring& choice : look.choices)
                choices.push_back(utf8(choice));
            action.texts[language] = joined(choices, " · ");
        }
        std::vector<std::string> times;
        for (std::size_t choice = 1; choice < ids.choices.size(); ++choice) {
            const Effects effects = effectsOf(report, [choice](WindowHandle window) {
                headless::choose(window, static_cast<int>(choice));
                headless::press(window, IDC_ALERT_OK);
            });
            const auto rest = *std::max_element(effects.rest.begin(), effects.rest.end());
            if (!effects.closes)
                throw std::runtime_error("a reminder time does not close the alert");
            times.push_back(hoursText(rest));
        }
        action.does = "then the OK button closes the alert, which rests for " + joined(times, ", ");
        return action;
    }

    // Each of these is asked of every alert, and left out where one of them answers otherwise.
    void addAlways() {
        const auto always = [this](const char* fact, auto holds) {
            const bool isSo =
                std::all_of(_reports.begin(), _reports.end(),
                            [&holds](const auto& entry) { return holds(entry.second); });
            if (isSo) _facts.always.emplace_back(fact);
        };
        always("None comes while the printer's data value “Status” is 0.",
               [](const Report& report) {
                   Setup setup;
                   setup.silentPrinter = true;
                   return !lookOf(report, setup);
               });
        always("A status with subcode 19 also presses “cancel” on the printer.", [](Report report) {
            report.subcode = status_subcode::kPressCancel;
            const Effects effects = effectsOf(report, [](WindowHandle) {});
            return effects.printerButtons == std::vector<std::wstring>{L"cancel"};
        });
        always("No alert that is open opens a second time.",
               [](const Report& report) { return !rulesOf(report).twice; });
    }

    void sortByTopic() {
        const auto place = [](const AlertFact& alert) {
            return std::find_if(topics().begin(), topics().end(),
                                [&alert](const Topic& topic) { return topic.id == alert.topic; });
        };
        std::stable_sort(_facts.alerts.begin(), _facts.alerts.end(),
                         [&place](const AlertFact& left, const AlertFact& right) {
                             return place(left) < place(right);
                         });
    }

    static Setup chineseSystem() {
        Setup setup;
        setup.systemLanguage = kSimplifiedChinese;
        return setup;
    }

    static constexpr char kEnglish[] = "en";
    static constexpr char kOnChineseSystem[] = "On a Chinese (Simplified) system";

    Facts _facts;
    StatusNames _names;
    std::map<int, std::string> _alertNames;
    std::vector<Picture> _pictures;
    TextsById _english;
    std::map<std::string, TextsById> _texts;  // by the code of the language
    std::map<Key, std::vector<StatusFact>> _statuses;
    std::map<Key, Report> _reports;
};

}  // namespace

Facts collectFacts(const std::filesystem::path& root) {
    return Collector(root).collect();
}

}  // namespace alert_facts
