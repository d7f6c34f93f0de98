#include "tools/alert_facts/trials.h"

#include "device/cartridge_validation.h"
#include "device/web_links.h"
#include "platform/simulated/process_ended.h"
#include "printer/printer_identity.h"
#include "ui/button_faces.h"
#include "ui/resource_ids.h"

#include <algorithm>
#include <stdexcept>

namespace alert_facts {

namespace {

constexpr struct {
    int control;
    const char* role;
} kRoles[] = {
    {IDC_ALERT_HEADLINE, "headline"},
    {IDC_ALERT_DETAIL, "detail"},
    {IDC_ALERT_MESSAGE, "message"},
    {IDC_DUPLEX_TITLE, "duplexTitle"},
    {IDC_DUPLEX_STEP_1, "step1"},
    {IDC_DUPLEX_STEP_2, "step2"},
    {IDC_DUPLEX_STEP_3, "step3"},
    {IDC_SUPPLIES_NAME, "suppliesName"},
    {IDC_SUPPLIES_PAGES, "suppliesPages"},
    {IDC_SUPPLIES_COMMENT, "suppliesComment"},
    {IDC_SUPPLIES_DETAIL, "suppliesDetail"},
    {IDC_SNOOZE_LABEL, "reminderLabel"},
};

WindowHandle open(SimulatedMonitor& monitor, const Report& report) {
    if (!report.medium.empty()) monitor.loadMedium(report.medium);
    return monitor.report(report.status, report.subcode);
}

Look read(WindowHandle handle) {
    const headless::Window& window = *headless::find(handle);
    Look look;
    look.roles["title"] = window.title;
    for (const auto& [id, control] : window.controls) {
        if (!control.visible) continue;
        if (control.picture != 0) look.pictures[id] = control.picture;
        if (buttonFace(id) == nullptr && !control.isLink) continue;
        look.controls[id] = control.text;
        look.isLink[id] = control.isLink;
    }
    for (const auto& [control, role] : kRoles) {
        const auto found = window.controls.find(control);
        if (found != window.controls.end() && found->second.visible)
            look.roles[role] = found->second.text;
    }
    const auto list = window.controls.find(IDC_SNOOZE_CHOICE);
    if (list != window.controls.end() && list->second.visible) look.choices = list->second.choices;
    look.defaultButton = window.defaultButton;
    if (headless::press(handle, IDC_ALERT_HELP)) {
        look.roles["help"] = headless::messages().back().text;
        look.roles["helpCaption"] = headless::messages().back().caption;
    }
    std::erase_if(look.roles, [](const auto& role) { return role.second.empty(); });
    return look;
}

}  // namespace

std::optional<Look> lookOf(const Report& report, const Setup& setup) {
    SimulatedMonitor monitor(setup);
    const WindowHandle window = open(monitor, report);
    if (window == nullptr) return std::nullopt;
    return read(window);
}

Effects effectsOf(const Report& report, const Step& step, const Setup& setup) {
    SimulatedMonitor monitor(setup);
    const WindowHandle window = open(monitor, report);
    step(window);
    return monitor.effects(window);
}

Effects effectsOf(CheckAction action) {
    SimulatedMonitor monitor;
    bool ended = false;
    try {
        if (action == CheckAction::Submit) validateCartridge(SimulatedMonitor::kPrinter);
        if (action == CheckAction::OpenPrivacyPage) openPrivacyPage();
    } catch (const platform::ProcessEnded&) {
        ended = true;
    }
    Effects effects = monitor.effects(nullptr);
    effects.endsMonitor = ended;
    return effects;
}

Rules rulesOf(const Report& report) {
    Rules rules{};
    {
        SimulatedMonitor monitor;
        headless::closeBox(open(monitor, report));
        const WindowHandle second = open(monitor, report);
        rules.again = second != nullptr;
        if (second != nullptr) headless::closeBox(second);
        monitor.insertNewCartridge();
        rules.againForNew = open(monitor, report) != nullptr;
    }
    {
        SimulatedMonitor monitor;
        open(monitor, report);
        rules.twice = open(monitor, report) != nullptr;
    }
    Setup unknown;
    unknown.knownCartridge = false;
    rules.withoutCartridge = lookOf(report, unknown).has_value();
    {
        SimulatedMonitor monitor;
        open(monitor, report);
        monitor.endDocument();
        rules.staysAfterDocument = !headless::windows().empty();
    }
    const auto rest = effectsOf(report, [](WindowHandle) {}).rest;
    rules.restHours = *std::max_element(rest.begin(), rest.end());
    return rules;
}

bool comesAfter(const Report& report, const Report& before) {
    SimulatedMonitor monitor;
    headless::closeBox(open(monitor, before));
    return open(monitor, report) != nullptr;
}

std::uint32_t maskBitsOf(const Report& report) {
    const auto comesWith = [&report](std::uint32_t mask) {
        Setup setup;
        setup.alertMask = mask;
        return lookOf(report, setup).has_value();
    };
    if (comesWith(0)) throw std::runtime_error("an alert comes although all are switched off");
    const std::uint32_t all = Setup().alertMask;
    std::uint32_t needed = 0;
    for (std::uint32_t bit = 1; bit <= all; bit <<= 1U) {
        if (!comesWith(all & ~bit)) needed |= bit;
    }
    return needed;
}

std::string maskClassOf(std::uint32_t bit) {
    Setup setup;
    setup.alertMask = bit;
    const SimulatedMonitor monitor(setup);
    const std::optional<AlertClasses> classes = readAlertClasses(SimulatedMonitor::kPrinter);
    if (!classes) throw std::runtime_error("the printer has no AlertMask");
    if (classes->errors) return "errors";
    return classes->information ? "information" : "warnings";
}

}  // namespace alert_facts
