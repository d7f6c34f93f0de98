#include "tools/printpath/keyword.h"

#include "ui/resource_ids.h"

namespace printpath {

namespace {

constexpr std::int64_t kLargestNumber = 0xFFFFFFFFLL;
constexpr std::int64_t kMostSeconds = 600;
constexpr std::int64_t kMostMilliseconds = 600000;
constexpr std::int64_t kMostBodyBytes = std::int64_t{64} * 1024 * 1024;
constexpr std::int64_t kMostRounds = 10000000;
constexpr std::int64_t kMostMemoryKiB = 1000000;
constexpr std::int64_t kMostHours = 1000000;
constexpr int kLargestControl = 0xFFFF;

constexpr std::string_view kSnoozes =
    "none|1-hour|4-hours|1-day|2-days|3-days|1-week|2-weeks|never";
constexpr bool kChangesSystem = true;
constexpr std::string_view kFlags = "illegal|foreign|memory|welcome";

constexpr Parameter text(std::string_view name) {
    return {name, ValueKind::Text};
}
constexpr Parameter hex(std::string_view name) {
    return {name, ValueKind::Hex};
}
constexpr Parameter control(std::string_view name = "control") {
    return {name, ValueKind::Control, true, 0, kLargestControl};
}
constexpr Parameter number(std::string_view name, std::int64_t most = kLargestNumber,
                           std::int64_t least = 0) {
    return {name, ValueKind::Number, true, least, most};
}
constexpr Parameter choice(std::string_view name, std::string_view words) {
    return {name, ValueKind::Choice, true, 0, 0, words};
}
constexpr Parameter optional(Parameter parameter) {
    parameter.required = false;
    return parameter;
}
constexpr Parameter within() {
    return optional(number("within", kMostSeconds, 1));
}
constexpr Parameter printerId() {
    return optional(number("id"));
}
constexpr Parameter hours(std::string_view name) {
    return optional(number(name, kMostHours, -kMostHours));
}
constexpr Parameter flags() {
    return {"flags", ValueKind::Choices, false, 0, 0, kFlags};
}

std::vector<Keyword> table() {
    using enum Phase;
    return {
        // The scenario itself
        {"about", Anywhere, {text("text")}},
        {"say", Anywhere, {text("text")}},
        {"repeat", Repeat, {number("rounds", kMostRounds, 1)}},
        {"end", End, {}},

        // Before the monitor starts
        {"printer-id", Preparation, {number("id", 0x7FFFFFFF)}},
        {"monitor-printer-id", Preparation, {number("id", 0x7FFFFFFF)}},
        {"pipe-mode", Preparation, {choice("mode", "message|byte")}},
        {"no-pipe", Preparation, {}},
        {"argument", Preparation, {text("text")}},
        {"environment", Preparation, {text("name"), text("value")}},
        {"language", Preparation, {text("locale")}},
        {"right-to-left-desktop", Preparation, {}},
        {"without-strings", Preparation, {}},
        {"start", Start, {}},

        // Records
        {"printer", Record, {text("name"), text("port"), printerId()}},
        {"printer-wide", Record, {text("name"), text("port"), printerId()}},
        {"document-start", Record, {number("job"), text("name"), printerId()}},
        {"document-start-wide", Record, {number("job"), text("name"), printerId()}},
        {"document-end", Record, {number("job"), printerId()}},
        {"job-status", Record, {number("status"), number("severity"), printerId()}},
        {"status", Record, {number("status"), printerId()}},
        {"device-event", Record, {number("subcode"), printerId()}},
        {"cartridge", Record, {number("serial"), printerId()}},
        {"media", Record, {text("name"), printerId()}},
        {"oem-hex", Record, {hex("bytes"), printerId()}},
        {"oem-file", Record, {text("file"), printerId()}},
        {"record",
         Record,
         {number("class"), number("subcode"), optional(hex("body")), optional(text("text")),
          optional(number("fill", kMostBodyBytes)), optional(number("length")), printerId()}},
        {"raw-hex", Record, {hex("bytes")}},
        {"raw-text", Record, {text("text")}},

        // How records are written
        {"write-as",
         Writing,
         {choice("pieces", "one-message|header-and-body|single-bytes|chunks"),
          optional(number("size", kMostBodyBytes, 1))}},
        {"together", Writing, {number("records", 100, 2)}},
        {"cut-next", Writing, {number("bytes", kMostBodyBytes)}},
        {"hang-up", HangUp, {}},

        // Time
        {"pause", Anywhere, {number("milliseconds", kMostMilliseconds)}},
        {"settle", Running, {within()}},
        {"wait-dialog", Running, {text("text"), optional(control("with")), within()}},
        {"wait-no-dialog", Running, {optional(text("text")), within()}},
        {"wait-alerts", Running, {number("count", 100), within()}},

        // What the user does
        {"press", Running, {control()}},
        {"click", Running, {control()}},
        {"post-key", Running, {{"key", ValueKind::Key}}},
        {"type-key", Running, {{"key", ValueKind::Key}}},
        {"choose", Running, {choice("snooze", kSnoozes)}},
        {"close-dialog", Running, {}},
        {"close-alerts",
         Running,
         {optional(choice("keep", "dialog")), optional(choice("choose", kSnoozes)), within()}},
        {"screenshot", Running, {text("name"), optional(choice("area", "dialog|message|screen"))}},

        // What must be seen
        {"expect-alerts", Running, {number("count", 100)}},
        {"expect-title", Running, {text("text")}},
        {"expect-text", Running, {control(), text("text")}},
        {"expect-text-with", Running, {control(), text("text")}},
        {"expect-visible", Running, {control()}},
        {"expect-hidden", Running, {control()}},
        {"expect-focus", Running, {control(), within()}},
        {"expect-position", Running, {number("left", 10000, -10000), number("top", 10000, -10000)}},
        {"expect-message", Running, {text("text"), optional(text("caption")), within()}},
        {"dismiss-message", Running, {}},
        {"expect-no-message", Running, {}},
        {"expect-trace", Anywhere, {text("text"), within()}},
        {"expect-no-trace", Anywhere, {text("text")}},
        {"expect-running", Running, {}},
        {"read-gauges", Running, {}},
        {"expect-flat", Anywhere, {optional(number("memory", kMostMemoryKiB))}},
        {"expect-exit", Exit, {number("code"), within()}},

        // What the monitor remembers
        {"forget-cartridges", Preparation, {}, kChangesSystem},
        {"known-cartridge",
         Anywhere,
         {number("serial"), hours("added"), hours("snooze-low"), hours("snooze-very-low"),
          hours("snooze-out"), flags()},
         kChangesSystem},
        {"current-cartridge", Anywhere, {number("serial")}, kChangesSystem},
        {"cartridge-version", Anywhere, {number("version")}, kChangesSystem},
        {"expect-current-cartridge", Anywhere, {number("serial"), within()}},
        {"expect-cartridge",
         Anywhere,
         {number("serial"), hours("snooze-low"), hours("snooze-very-low"), hours("snooze-out"),
          flags(), within()}},
        {"expect-no-cartridge", Anywhere, {number("serial")}},
        {"registry-text",
         Anywhere,
         {choice("root", "user|machine"), text("key"), text("name"), text("value")},
         kChangesSystem},
        {"registry-number",
         Anywhere,
         {choice("root", "user|machine"), text("key"), text("name"), number("value")},
         kChangesSystem},
        {"expect-registry-text",
         Anywhere,
         {choice("root", "user|machine"), text("key"), text("name"), text("value"), within()}},

        // The spooler
        {"spooler-printer",
         Preparation,
         {text("name"), optional(number("alert-mask")), optional(number("status"))},
         kChangesSystem},
        {"printer-driver", Preparation, {text("name")}, kChangesSystem},
        {"spooler-value",
         Anywhere,
         {text("printer"), text("value"), number("number")},
         kChangesSystem},

        // The device
        {"device", Preparation, {}},
        {"device-in-path", Preparation, {}},
        {"device-supplies",
         Anywhere,
         {optional(text("serial")), optional(text("product")), optional(text("pages"))}},
        {"device-page", Anywhere, {text("path"), text("file")}},
        {"device-page-text", Anywhere, {text("path"), text("text")}},
        {"device-page-missing", Anywhere, {text("path")}},
        {"device-offline", Anywhere, {}},
        {"device-online", Anywhere, {}},
        {"device-slow", Anywhere, {number("milliseconds", kMostMilliseconds)}},
        {"expect-button", Running, {text("button"), within()}},
        {"expect-no-button", Anywhere, {}},
        {"expect-page-fetched", Anywhere, {text("path"), within()}},
        {"expect-page-not-fetched", Anywhere, {text("path")}},

        // Links and documents
        {"record-links", Anywhere, {}, kChangesSystem},
        {"expect-opened", Anywhere, {text("text"), within()}},
        {"expect-nothing-opened", Anywhere, {}},
        {"install-file", Anywhere, {text("file"), text("target")}, kChangesSystem},
        {"protect-file", Anywhere, {text("target")}, kChangesSystem},
        {"remove-file", Anywhere, {text("target")}, kChangesSystem},
        {"expect-file-with", Anywhere, {text("target"), text("text"), within()}},
    };
}

}  // namespace

const std::vector<Keyword>& keywords() {
    static const std::vector<Keyword> all = table();
    return all;
}

const Keyword* findKeyword(std::string_view name) {
    for (const Keyword& keyword : keywords())
        if (keyword.name == name) return &keyword;
    return nullptr;
}

std::string usageOf(const Keyword& keyword) {
    std::string text(keyword.name);
    for (const Parameter& parameter : keyword.parameters) {
        const std::string name(parameter.name);
        text += parameter.required ? " <" + name + ">" : " [" + name + "=...]";
    }
    return text;
}

const std::vector<ControlName>& controlNames() {
    // clang-format off
    static const std::vector<ControlName> names = {
        {"cancel",            IDC_ALERT_CANCEL},
        {"ok",                IDC_ALERT_OK},
        {"help",              IDC_ALERT_HELP},
        {"message",           IDC_ALERT_MESSAGE},
        {"picture",           IDC_ALERT_PICTURE},
        {"return",            IDC_ALERT_RECYCLE},
        {"settings",          IDC_ALERT_SETTINGS},
        {"banner",            IDC_ALERT_BANNER},
        {"icon",              IDC_ALERT_ICON},
        {"headline",          IDC_ALERT_HEADLINE},
        {"snooze",            IDC_SNOOZE_CHOICE},
        {"snooze-label",      IDC_SNOOZE_LABEL},
        {"detail",            IDC_ALERT_DETAIL},
        {"shop",              IDC_ALERT_SHOP},
        {"supplies-picture",  IDC_SUPPLIES_PICTURE},
        {"supplies-icon",     IDC_SUPPLIES_CONDITION},
        {"supplies-name",     IDC_SUPPLIES_NAME},
        {"supplies-detail",   IDC_SUPPLIES_DETAIL},
        {"supplies-pages",    IDC_SUPPLIES_PAGES},
        {"supplies-comment",  IDC_SUPPLIES_COMMENT},
        {"duplex-title",      IDC_DUPLEX_TITLE},
        {"duplex-step-1",     IDC_DUPLEX_STEP_1},
        {"duplex-step-2",     IDC_DUPLEX_STEP_2},
        {"duplex-step-3",     IDC_DUPLEX_STEP_3},
        {"check-heading",     IDC_CHECK_HEADING},
        {"check-explanation", IDC_CHECK_EXPLANATION},
        {"check-submit",      IDC_CHECK_SUBMIT},
        {"check-decline",     IDC_CHECK_DECLINE},
        {"check-learn-more",  IDC_CHECK_LEARN_MORE},
        {"details-done",      IDC_DETAILS_DONE},
        {"details-privacy",   IDC_DETAILS_PRIVACY_LINK},
    };
    // clang-format on
    return names;
}

}  // namespace printpath
