#include "platform/clock.h"
#include "tools/printpath/windows/actions.h"
#include "tools/printpath/windows/cartridge_memory.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/registry_values.h"
#include "tools/printpath/windows/scenario_run.h"
#include "tools/printpath/windows/wide_text.h"

#include <cstdlib>

namespace printpath {

namespace {

constexpr std::int64_t kSecondsPerHour = 3600;
// The monitor counts a snooze from the moment of the alert, and the step checks it some time later.
constexpr std::int64_t kToleranceSeconds = 120;

HKEY rootOf(const Step& step) {
    return step["root"].number == 0 ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

// The time so many hours from now; 0 when the step does not give a number of hours.
std::int64_t timeOf(const Value& hours) {
    return hours.given ? platform::now() + hours.number * kSecondsPerHour : 0;
}

void forget(ScenarioRun&, const Step&) {
    forgetCartridges();
}

void knownCartridge(ScenarioRun&, const Step& step) {
    RememberedCartridge cartridge;
    cartridge.serial = numberOf(step["serial"]);
    cartridge.added = step["added"].given ? timeOf(step["added"]) : platform::now();
    cartridge.snoozeLow = timeOf(step["snooze-low"]);
    cartridge.snoozeVeryLow = timeOf(step["snooze-very-low"]);
    cartridge.snoozeOut = timeOf(step["snooze-out"]);
    cartridge.flags = static_cast<unsigned int>(step["flags"].number);
    rememberCartridge(cartridge);
}

void currentCartridgeIs(ScenarioRun&, const Step& step) {
    setCurrentCartridge(numberOf(step["serial"]));
}

void cartridgeVersion(ScenarioRun&, const Step& step) {
    setCartridgeVersion(numberOf(step["version"]));
}

void expectCurrentCartridge(ScenarioRun& run, const Step& step) {
    const std::uint32_t wanted = numberOf(step["serial"]);
    run.waitUntil(step, "the current cartridge to be " + std::to_string(wanted),
                  [wanted] { return currentCartridge() == wanted; });
}

// 0 hours mean a slot whose snooze is over: its time is in the past. In the current second the
// snooze is not over yet.
bool matches(const Value& hours, std::int64_t until) {
    if (!hours.given) return true;
    if (hours.number == 0) return until < platform::now();
    return std::llabs(until - timeOf(hours)) <= kToleranceSeconds;
}

bool matches(const Step& step, const RememberedCartridge& cartridge) {
    return matches(step["snooze-low"], cartridge.snoozeLow) &&
           matches(step["snooze-very-low"], cartridge.snoozeVeryLow) &&
           matches(step["snooze-out"], cartridge.snoozeOut) &&
           (!step["flags"].given ||
            cartridge.flags == static_cast<unsigned int>(step["flags"].number));
}

void expectCartridge(ScenarioRun& run, const Step& step) {
    const std::uint32_t serial = numberOf(step["serial"]);
    run.waitUntil(
        step, step.written,
        [&] {
            const auto cartridge = findCartridge(serial);
            return cartridge && matches(step, *cartridge);
        },
        [&] {
            const auto cartridge = findCartridge(serial);
            return "remembered: " + (cartridge ? describe(*cartridge) : "no such cartridge");
        });
}

void expectNoCartridge(ScenarioRun& run, const Step& step) {
    if (run.started()) run.settle();
    const auto cartridge = findCartridge(numberOf(step["serial"]));
    if (cartridge) throw Failure("the monitor remembers " + describe(*cartridge));
}

// Remembers the value before it is changed, so that it can be restored when the scenario has ended.
void noteValue(ScenarioRun& run, const Step& step) {
    run.registry.note(rootOf(step), wideFromUtf8(step["key"].text),
                      wideFromUtf8(step["name"].text));
}

void registryText(ScenarioRun& run, const Step& step) {
    noteValue(run, step);
    writeText(rootOf(step), wideFromUtf8(step["key"].text), wideFromUtf8(step["name"].text),
              wideFromUtf8(step["value"].text));
}

void registryNumber(ScenarioRun& run, const Step& step) {
    noteValue(run, step);
    writeNumber(rootOf(step), wideFromUtf8(step["key"].text), wideFromUtf8(step["name"].text),
                numberOf(step["value"]));
}

void expectRegistryText(ScenarioRun& run, const Step& step) {
    const std::wstring key = wideFromUtf8(step["key"].text);
    const std::wstring name = wideFromUtf8(step["name"].text);
    const std::wstring wanted = wideFromUtf8(step["value"].text);
    run.waitUntil(step, "the registry value " + shown(name) + " to be " + shown(wanted),
                  [&] { return readText(rootOf(step), key, name) == wanted; });
}

void spoolerPrinter(ScenarioRun& run, const Step& step) {
    const std::wstring name = wideFromUtf8(step["name"].text);
    run.printers.push_back(std::make_unique<SpoolerPrinter>(name));
    if (step["alert-mask"].given) setPrinterValue(name, L"AlertMask", numberOf(step["alert-mask"]));
    if (step["status"].given) setPrinterValue(name, L"Status", numberOf(step["status"]));
}

void spoolerValue(ScenarioRun&, const Step& step) {
    setPrinterValue(wideFromUtf8(step["printer"].text), wideFromUtf8(step["value"].text),
                    numberOf(step["number"]));
}

}  // namespace

std::vector<Action> memoryActions() {
    return {
        {"forget-cartridges", forget},
        {"known-cartridge", knownCartridge},
        {"current-cartridge", currentCartridgeIs},
        {"cartridge-version", cartridgeVersion},
        {"expect-current-cartridge", expectCurrentCartridge},
        {"expect-cartridge", expectCartridge},
        {"expect-no-cartridge", expectNoCartridge},
        {"registry-text", registryText},
        {"registry-number", registryNumber},
        {"expect-registry-text", expectRegistryText},
        {"spooler-printer", spoolerPrinter},
        {"spooler-value", spoolerValue},
    };
}

}  // namespace printpath
