#include "tools/printpath/windows/actions.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/registry_values.h"
#include "tools/printpath/windows/scenario_run.h"
#include "tools/printpath/windows/text_file.h"
#include "tools/printpath/windows/wide_text.h"
#include "tools/printpath/windows/wine.h"

#include <algorithm>

namespace printpath {

namespace {

constexpr wchar_t kDriverVariable[] = L"QVSM_PRINTER_DRIVER";
constexpr wchar_t kSpoolerLibrary[] = L"winspool.drv";
constexpr std::int64_t kReadings = 60;
constexpr ULONGLONG kPauseMs = 1000;  // a longer pause is made of pauses of this length

void about(ScenarioRun&, const Step&) {}  // the player has printed the text already

void printerId(ScenarioRun& run, const Step& step) {
    run.preparation.printerId = numberOf(step["id"]);
}

void monitorPrinterId(ScenarioRun& run, const Step& step) {
    run.preparation.monitorPrinterId = numberOf(step["id"]);
}

void pipeMode(ScenarioRun& run, const Step& step) {
    run.preparation.byteMode = step["mode"].number != 0;
}

void noPipe(ScenarioRun& run, const Step&) {
    run.preparation.withPipe = false;
}

void argument(ScenarioRun& run, const Step& step) {
    run.preparation.arguments += L" " + wideFromUtf8(step["text"].text);
}

void environment(ScenarioRun& run, const Step& step) {
    run.preparation.environment[wideFromUtf8(step["name"].text)] = wideFromUtf8(step["value"].text);
}

// The language belongs to the session in which printpath runs and cannot be changed from here. The
// step checks that it is the language that the scenario was written for.
void language(ScenarioRun&, const Step& step) {
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
    ::LCIDToLocaleName(MAKELCID(::GetUserDefaultUILanguage(), SORT_DEFAULT), name,
                       LOCALE_NAME_MAX_LENGTH, 0);
    std::wstring wanted = wideFromUtf8(step["locale"].text);
    for (wchar_t& unit : wanted)
        if (unit == L'_') unit = L'-';
    if (wanted != name)
        throw Failure("this scenario is for the language " + shown(wanted) +
                          " and the session runs in " + shown(std::wstring(name)) +
                          "; under Wine set LC_ALL for printpath",
                      Outcome::Unusable);
}

void rightToLeftDesktop(ScenarioRun& run, const Step&) {
    run.mirroredDesktop = std::make_unique<MirroredDesktop>();
}

void withoutStrings(ScenarioRun& run, const Step&) {
    run.preparation.withStrings = false;
}

// The runner must have copied the file there, because printpath cannot: the system folder may
// contain links into a prefix that others share, and a Windows program would write through them.
bool isPlacedInSystemFolder(const std::filesystem::path& spooler) {
    wchar_t folder[MAX_PATH + 1];
    const std::wstring system(folder, ::GetSystemDirectoryW(folder, MAX_PATH));
    const std::string placed = readWholeFile(std::filesystem::path(system) / kSpoolerLibrary);
    return !placed.empty() && placed == readWholeFile(spooler);
}

void printerDriver(ScenarioRun& run, const Step& step) {
    const std::filesystem::path& spooler = run.options().spooler;
    if (!underWine() || !isPlacedInSystemFolder(spooler))
        throw Failure("the spooler is simulated under Wine only, with " + pathText(spooler) +
                          " in the place of winspool.drv in the system folder of the prefix",
                      Outcome::Unusable);
    // Set the override in the registry and not in WINEDLLOVERRIDES, which would apply to this
    // program as well. This program needs Wine's own spooler to add printers.
    const std::wstring key = L"Software\\Wine\\AppDefaults\\" +
                             run.options().monitor.filename().wstring() + L"\\DllOverrides";
    run.registry.note(HKEY_CURRENT_USER, key, kSpoolerLibrary);
    writeText(HKEY_CURRENT_USER, key, kSpoolerLibrary, L"native,builtin");
    run.preparation.environment[kDriverVariable] = wideFromUtf8(step["name"].text);
}

void start(ScenarioRun& run, const Step& step) {
    run.startMonitor();
    if (!run.pipe) return;
    run.waitUntil(step, "the monitor to open the pipe", [&run] { return run.pipe->connected(); });
    run.timeline().note("the monitor has opened the pipe");
}

void expectExit(ScenarioRun& run, const Step& step) {
    const DWORD code = run.awaitExit(step);
    run.timeline().note("the monitor has ended with exit code " + describeExitCode(code));
    if (code == numberOf(step["code"])) return;
    throw Failure("the exit code is " + describeExitCode(code) + ", not " +
                      describeExitCode(numberOf(step["code"])),
                  isCrash(code) ? Outcome::Crashed : Outcome::NotAsExpected);
}

void expectRunning(ScenarioRun& run, const Step&) {
    run.settle();
    run.monitor();
}

void pauseFor(ScenarioRun& run, const Step& step) {
    const DWORD pauseMs = numberOf(step["milliseconds"]);
    const std::string what = "the end of the pause";
    WaitProgress progress(run.timeline(), what, static_cast<int>(pauseMs));
    const ULONGLONG end = ::GetTickCount64() + pauseMs;
    for (ULONGLONG now = 0; (now = ::GetTickCount64()) < end; progress.show())
        ::Sleep(static_cast<DWORD>(std::min<ULONGLONG>(end - now, kPauseMs)));
}

void settle(ScenarioRun& run, const Step&) {
    run.settle();
}

// A repeated part is read at most sixty times, because each reading takes a while.
void readGauges(ScenarioRun& run, const Step&) {
    const bool isRead = run.rounds <= kReadings || run.round * kReadings / run.rounds !=
                                                       (run.round - 1) * kReadings / run.rounds;
    if (isRead) run.gaugeLog.add(run.round, run.settledGauges());
}

void expectFlat(ScenarioRun& run, const Step& step) {
    const std::string problems = run.gaugeLog.problems(static_cast<long>(step["memory"].number));
    run.timeline().plain(run.gaugeLog.table());
    run.gaugeLog = {};
    if (!problems.empty()) throw Failure("not flat: " + problems);
    run.timeline().note("handles, windows, GDI objects, threads and memory are flat");
}

void expectTrace(ScenarioRun& run, const Step& step) {
    run.waitUntil(step, "the trace line " + shown(step["text"].text), [&run, &step] {
        return run.trace().find(step["text"].text) != std::string::npos;
    });
}

void expectNoTrace(ScenarioRun& run, const Step& step) {
    if (run.started()) run.settle();
    if (run.trace().find(step["text"].text) != std::string::npos)
        throw Failure("the monitor has traced " + shown(step["text"].text));
}

}  // namespace

std::vector<Action> startActions() {
    return {
        {"about", about},
        {"say", about},
        {"printer-id", printerId},
        {"monitor-printer-id", monitorPrinterId},
        {"pipe-mode", pipeMode},
        {"no-pipe", noPipe},
        {"argument", argument},
        {"environment", environment},
        {"language", language},
        {"right-to-left-desktop", rightToLeftDesktop},
        {"printer-driver", printerDriver},
        {"without-strings", withoutStrings},
        {"start", start},
        {"expect-exit", expectExit},
        {"expect-running", expectRunning},
        {"pause", pauseFor},
        {"settle", settle},
        {"read-gauges", readGauges},
        {"expect-flat", expectFlat},
        {"expect-trace", expectTrace},
        {"expect-no-trace", expectNoTrace},
    };
}

}  // namespace printpath
