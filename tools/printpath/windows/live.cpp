#include "tools/printpath/windows/live.h"

#include "tools/printpath/live_session.h"
#include "tools/printpath/scenario_parser.h"
#include "tools/printpath/windows/player.h"
#include "tools/printpath/windows/scenario_run.h"
#include "tools/printpath/windows/text_file.h"
#include "tools/printpath/windows/wide_text.h"

#include <iostream>
#include <optional>

namespace printpath {

namespace {

constexpr DWORD kLookEveryMs = 100;
constexpr DWORD kConsoleUnits = 16384;

// The console shows UTF-8 while this object exists.
class Utf8Console {
public:
    Utf8Console() : _before(::GetConsoleOutputCP()) { ::SetConsoleOutputCP(CP_UTF8); }
    ~Utf8Console() { ::SetConsoleOutputCP(_before); }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    UINT _before;
};

bool isConsole(HANDLE input) {
    DWORD mode = 0;
    return ::GetConsoleMode(input, &mode) != 0;
}

// The next line of the input in UTF-8, without its line end; nothing at the end of the input. A
// console is read as wide text, because its code page lacks most letters.
std::optional<std::string> readLine() {
    const HANDLE input = ::GetStdHandle(STD_INPUT_HANDLE);
    std::string line;
    if (isConsole(input)) {
        std::wstring wide(kConsoleUnits, L'\0');
        DWORD units = 0;
        if (!::ReadConsoleW(input, wide.data(), kConsoleUnits, &units, nullptr) || units == 0)
            return std::nullopt;
        line = utf8FromWide(wide.substr(0, units));
        if (line.starts_with('\x1A')) return std::nullopt;  // Ctrl+Z
    } else if (!std::getline(std::cin, line)) {
        return std::nullopt;
    }
    while (line.ends_with('\n') || line.ends_with('\r'))
        line.pop_back();
    return line;
}

DWORD WINAPI readInto(void* line) noexcept {
    *static_cast<std::optional<std::string>*>(line) = readLine();
    return 0;
}

// Tells of dialogs and of the monitor's end while somebody types.
class Watcher {
public:
    explicit Watcher(ScenarioRun& run) : _run(run) {}

    std::optional<std::string> nextLine() {
        const bool asks = isConsole(::GetStdHandle(STD_INPUT_HANDLE));
        // Reading waits for the user, so a thread does it.
        std::optional<std::string> line;
        const Handle thread(::CreateThread(nullptr, 0, readInto, &line, 0, nullptr));
        do {
            look();
            if (asks && !_run.timeline().isPrompting()) _run.timeline().prompt();
        } while (::WaitForSingleObject(thread.get(), kLookEveryMs) == WAIT_TIMEOUT);
        return line;
    }

    void look() {
        if (!_run.started()) {
            _toldOfEnd = false;
            return;
        }
        _run.noticeDialogs();
        if (_toldOfEnd) return;
        try {
            _run.monitor();
        } catch (const Failure& failure) {
            _run.timeline().note(std::string(failure.what()) +
                                 "; \"expect-exit\" with this code ends the run");
            _toldOfEnd = true;
        }
    }

private:
    ScenarioRun& _run;
    bool _toldOfEnd = false;
};

void play(LiveSession& session, ScenarioRun& run) {
    Outcome outcome = Outcome::Unusable;
    try {
        requireAllowedChanges(session.toPlay(), run.options());
        outcome = playSteps(session.toPlay(), run);
    } catch (const Failure& failure) {
        run.timeline().problem(failure.what());
    }
    // A repeated part that failed may have left the timeline quiet.
    run.timeline().setQuiet(false);
    if (outcome == Outcome::AsExpected)
        session.succeeded();
    else
        session.failed(run.started());
}

void save(const LiveSession& session, Timeline& timeline, const std::string& name) {
    const std::filesystem::path file = wideFromUtf8(name);
    const auto saved = session.saved();
    if (const auto* error = std::get_if<ScenarioError>(&saved))
        return timeline.problem("nothing is saved: " + error->message);
    if (std::filesystem::exists(file))
        return timeline.problem(name + " exists already; choose another name");
    try {
        writeWholeFile(std::filesystem::absolute(file), std::get<std::string>(saved));
        timeline.note("saved; printpath \"" + name + "\" plays it");
    } catch (const Failure& failure) {
        timeline.problem(failure.what());
    }
}

}  // namespace

Outcome playLive(const Options& options) {
    requireAllowedChanges({}, options);
    const Utf8Console console;
    Timeline timeline;
    ScenarioRun run(options, timeline);
    LiveSession session;
    Watcher watcher(run);
    timeline.plain("Type \"help\" for help, \"?\" for all keywords, \"quit\" to end.");
    while (const std::optional<std::string> line = watcher.nextLine()) {
        const LiveAnswer answer = session.take(*line);
        switch (answer.wish) {
            case LiveWish::Nothing:
                break;
            case LiveWish::Tell:
                timeline.plain(answer.text);
                break;
            case LiveWish::Refuse:
                timeline.problem(answer.text);
                break;
            case LiveWish::Play:
                play(session, run);
                break;
            case LiveWish::Save:
                save(session, timeline, answer.text);
                break;
            case LiveWish::Quit:
                return Outcome::AsExpected;
        }
    }
    return Outcome::AsExpected;
}

}  // namespace printpath
