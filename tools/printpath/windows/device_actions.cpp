#include "tools/printpath/windows/actions.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/scenario_run.h"
#include "tools/printpath/windows/text_file.h"
#include "tools/printpath/windows/wide_text.h"

namespace printpath {

namespace {

constexpr char kConfigurationPage[] = "/DevMgmt/ConsumableConfigDyn.xml";
constexpr char kUsagePage[] = "/DevMgmt/ProductUsageDyn.xml";

void device(ScenarioRun& run, const Step&) {
    run.simulatedDevice =
        std::make_unique<SimulatedDevice>(run.options().device, run.workFile(L"device"));
}

void deviceInPath(ScenarioRun& run, const Step&) {
    const SimulatedDevice device(run.options().device, run.workFile(L"device"));
    run.preparation.environment[L"PATH"] = device.libraryFile().parent_path().wstring();
}

void deviceSupplies(ScenarioRun& run, const Step& step) {
    SimulatedDevice& device = run.device();
    if (step["serial"].given)
        device.setElement(kConfigurationPage, "dd:SerialNumber", step["serial"].text);
    if (step["product"].given)
        device.setElement(kConfigurationPage, "dd:ProductNumber", step["product"].text);
    if (step["pages"].given)
        device.setElement(kUsagePage, "dd:EstimatedPagesRemaining", step["pages"].text);
}

void devicePage(ScenarioRun& run, const Step& step) {
    run.device().setPage(step["path"].text, run.readBesideScenario(step["file"].text));
}

void devicePageText(ScenarioRun& run, const Step& step) {
    run.device().setPage(step["path"].text, step["text"].text);
}

void devicePageMissing(ScenarioRun& run, const Step& step) {
    run.device().removePage(step["path"].text);
}

void deviceOffline(ScenarioRun& run, const Step&) {
    run.device().setOffline(true);
}
void deviceOnline(ScenarioRun& run, const Step&) {
    run.device().setOffline(false);
}

void deviceSlow(ScenarioRun& run, const Step& step) {
    run.device().setSlow(static_cast<int>(step["milliseconds"].number));
}

// Whether the log has a line that is "<what>" or begins with "<what> ".
bool hasLine(const std::string& log, const std::string& what) {
    for (std::size_t at = 0; at < log.size();) {
        const std::size_t end = std::min(log.find('\n', at), log.size());
        const std::string line = log.substr(at, end - at);
        if (line == what || line.substr(0, what.size() + 1) == what + " ") return true;
        at = end + 1;
    }
    return false;
}

void expectLine(ScenarioRun& run, const Step& step, const std::string& what) {
    const SimulatedDevice& device = run.device();
    run.waitUntil(
        step, "the device to log " + shown(what), [&] { return hasLine(device.log(), what); },
        [&] { return "the device logged " + shown(device.log()); });
}

void expectNoLine(ScenarioRun& run, const std::string& what) {
    if (run.started()) run.settle();
    if (hasLine(run.device().log(), what))
        throw Failure("the device logged " + shown(run.device().log()));
}

void expectButton(ScenarioRun& run, const Step& step) {
    expectLine(run, step, "button " + step["button"].text);
}

void expectNoButton(ScenarioRun& run, const Step&) {
    expectNoLine(run, "button");
}

void expectPageFetched(ScenarioRun& run, const Step& step) {
    expectLine(run, step, "page " + step["path"].text);
}

void expectPageNotFetched(ScenarioRun& run, const Step& step) {
    expectNoLine(run, "page " + step["path"].text);
}

void recordLinks(ScenarioRun& run, const Step&) {
    run.linkRecorder =
        std::make_unique<LinkRecorder>(run.options().recorder, run.workFile(L"opened.txt"));
}

void expectOpened(ScenarioRun& run, const Step& step) {
    const LinkRecorder& recorder = run.recorder();
    const std::string& text = step["text"].text;
    run.waitUntil(
        step, shown(text) + " to be opened",
        [&] { return recorder.opened().find(text) != std::string::npos; },
        [&] { return "opened so far: " + shown(recorder.opened()); });
}

void expectNothingOpened(ScenarioRun& run, const Step&) {
    if (run.started()) run.settle();
    const std::string opened = run.recorder().opened();
    if (!opened.empty()) throw Failure("the monitor opened " + shown(opened));
}

void installFile(ScenarioRun& run, const Step& step) {
    const std::string bytes = run.readBesideScenario(step["file"].text);
    const std::wstring target = wideFromUtf8(step["target"].text);
    run.protectedFiles.erase(target);
    writeWholeFile(target, bytes);
}

// Keeps the file open without sharing it for writing, which stops every writer on every system. An
// access right would not stop an administrator.
void protectFile(ScenarioRun& run, const Step& step) {
    const std::wstring target = wideFromUtf8(step["target"].text);
    Handle file = fileHandle(::CreateFileW(target.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throw Failure(shown(target) + " could not be protected", Outcome::Unusable);
    run.protectedFiles[target] = std::move(file);
}

void removeFile(ScenarioRun& run, const Step& step) {
    const std::wstring target = wideFromUtf8(step["target"].text);
    run.protectedFiles.erase(target);
    if (!::DeleteFileW(target.c_str()) &&
        ::GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES)
        throw Failure(shown(target) + " could not be removed", Outcome::Unusable);
}

void expectFileWith(ScenarioRun& run, const Step& step) {
    const std::filesystem::path file = wideFromUtf8(step["target"].text);
    run.waitUntil(step, pathText(file) + " to hold " + shown(step["text"].text),
                  [&] { return readWholeFile(file).find(step["text"].text) != std::string::npos; });
}

}  // namespace

std::vector<Action> deviceActions() {
    return {
        {"device", device},
        {"device-in-path", deviceInPath},
        {"device-supplies", deviceSupplies},
        {"device-page", devicePage},
        {"device-page-text", devicePageText},
        {"device-page-missing", devicePageMissing},
        {"device-offline", deviceOffline},
        {"device-online", deviceOnline},
        {"device-slow", deviceSlow},
        {"expect-button", expectButton},
        {"expect-no-button", expectNoButton},
        {"expect-page-fetched", expectPageFetched},
        {"expect-page-not-fetched", expectPageNotFetched},
        {"record-links", recordLinks},
        {"expect-opened", expectOpened},
        {"expect-nothing-opened", expectNothingOpened},
        {"install-file", installFile},
        {"protect-file", protectFile},
        {"remove-file", removeFile},
        {"expect-file-with", expectFileWith},
    };
}

}  // namespace printpath
