#include "tools/printpath/windows/actions.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/stage.h"
#include "tools/printpath/windows/text_file.h"
#include "tools/printpath/windows/wide_text.h"
#include "tools/printpath/windows/wine.h"

namespace printpath {

namespace {

constexpr wchar_t kDriverVariable[] = L"QVSM_PRINTER_DRIVER";

constexpr std::int64_t kReadings = 60;

std::uint32_t numberOf(const Value& value) {
    return static_cast<std::uint32_t>(value.number);
}

void about(Stage&, const Step&) {}  // the player has printed it

void printerId(Stage& stage, const Step& step) {
    stage.preparation.printerId = numberOf(step["id"]);
}

void monitorPrinterId(Stage& stage, const Step& step) {
    stage.preparation.monitorPrinterId = numberOf(step["id"]);
}

void pipeMode(Stage& stage, const Step& step) {
    stage.preparation.byteMode = step["mode"].number != 0;
}

void noPipe(Stage& stage, const Step&) {
    stage.preparation.withPipe = false;
}

void argument(Stage& stage, const Step& step) {
    stage.preparation.arguments += L" " + wideFromUtf8(step["text"].text);
}

void environment(Stage& stage, const Step& step) {
    stage.preparation.environment[wideFromUtf8(step["name"].text)] =
        wideFromUtf8(step["value"].text);
}

// The language belongs to the session in which printpath runs, which nothing here can change: a
// scenario says which one it was written for.
void language(Stage&, const Step& step) {
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

void rightToLeftDesktop(Stage& stage, const Step&) {
    stage.mirroredDesktop = std::make_unique<MirroredDesktop>();
}

void withoutStrings(Stage& stage, const Step&) {
    stage.preparation.withStrings = false;
}

void printerDriver(Stage& stage, const Step& step) {
    const std::filesystem::path& spooler = stage.options().spooler;
    if (!underWine() || !isPlacedInSystemFolder(spooler))
        throw Failure("the spooler is simulated under Wine only, with " + pathText(spooler) +
                          " in the place of winspool.drv in the system folder of the prefix",
                      Outcome::Unusable);
    if (!stage.spoolerOverride)
        stage.spoolerOverride =
            std::make_unique<SpoolerOverride>(stage.options().monitor.filename().wstring());
    stage.preparation.environment[kDriverVariable] = wideFromUtf8(step["name"].text);
}

void start(Stage& stage, const Step& step) {
    stage.startMonitor();
    if (!stage.pipe) return;
    stage.waitUntil(step, "the monitor to open the pipe",
                    [&stage] { return stage.pipe->connected(); });
    stage.timeline().note("the monitor has opened the pipe");
}

void expectExit(Stage& stage, const Step& step) {
    const DWORD code = stage.awaitExit(step);
    stage.timeline().note("the monitor has ended with exit code " + describeExitCode(code));
    if (code == numberOf(step["code"])) return;
    throw Failure("the exit code is " + describeExitCode(code) + ", not " +
                      describeExitCode(numberOf(step["code"])),
                  isCrash(code) ? Outcome::Crashed : Outcome::NotAsExpected);
}

void expectRunning(Stage& stage, const Step&) {
    stage.settle();
    stage.monitor();
}

void pauseFor(Stage&, const Step& step) {
    ::Sleep(numberOf(step["milliseconds"]));
}

void settle(Stage& stage, const Step&) {
    stage.settle();
}

// A repeated part is read at most sixty times, because each reading takes a while.
void readGauges(Stage& stage, const Step&) {
    const bool isRead =
        stage.rounds <= kReadings ||
        stage.round * kReadings / stage.rounds != (stage.round - 1) * kReadings / stage.rounds;
    if (isRead) stage.gaugeLog.add(stage.round, stage.settledGauges());
}

void expectFlat(Stage& stage, const Step& step) {
    const std::string problems = stage.gaugeLog.problems(static_cast<long>(step["memory"].number));
    stage.timeline().plain(stage.gaugeLog.table());
    stage.gaugeLog = {};
    if (!problems.empty()) throw Failure("not flat: " + problems);
    stage.timeline().note("handles, windows, GDI objects, threads and memory are flat");
}

void expectTrace(Stage& stage, const Step& step) {
    stage.waitUntil(step, "the trace line " + shown(step["text"].text), [&stage, &step] {
        return stage.trace().find(step["text"].text) != std::string::npos;
    });
}

void expectNoTrace(Stage& stage, const Step& step) {
    if (stage.started()) stage.settle();
    if (stage.trace().find(step["text"].text) != std::string::npos)
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
