#include "tools/printpath/windows/options.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/wide_text.h"
#include "tools/printpath/windows/wine.h"

#include <cwchar>

namespace printpath {

namespace {

constexpr long kMostSeconds = 600;

struct PathOption {
    const wchar_t* name;
    std::filesystem::path Options::*path;
};

constexpr PathOption kPathOptions[] = {
    {L"--monitor", &Options::monitor},   {L"--device", &Options::device},
    {L"--recorder", &Options::recorder}, {L"--spooler", &Options::spooler},
    {L"--pictures", &Options::pictures},
};

int secondsOf(const std::wstring& text) {
    wchar_t* end = nullptr;
    const long seconds = std::wcstol(text.c_str(), &end, 10);
    if (text.empty() || *end != 0 || seconds < 1 || seconds > kMostSeconds)
        throw Failure("--timeout needs a number of seconds from 1 to 600, not " + shown(text),
                      Outcome::Unusable);
    return static_cast<int>(seconds);
}

bool allows(const std::wstring& text) {
    if (text != L"allow" && text != L"refuse")
        throw Failure("--system-changes needs \"allow\" or \"refuse\", not " + shown(text),
                      Outcome::Unusable);
    return text == L"allow";
}

class ArgumentReader {
public:
    ArgumentReader(const std::vector<std::wstring>& arguments, Options& options)
        : _arguments(arguments), _options(options) {}

    void read() {
        for (; _at < _arguments.size(); ++_at)
            if (!readSwitch() && !readPath()) readScenario();
    }

private:
    const std::wstring& next() {
        if (_at + 1 == _arguments.size())
            throw Failure(utf8FromWide(_arguments[_at]) + " needs a value", Outcome::Unusable);
        return _arguments[++_at];
    }

    bool readSwitch() {
        const std::wstring& argument = _arguments[_at];
        if (argument == L"--byte-mode")
            _options.byteMode = true;
        else if (argument == L"--clean")
            _options.clean = true;
        else if (argument == L"--check")
            _options.task = Task::Check;
        else if (argument == L"--about")
            _options.task = Task::About;
        else if (argument == L"--keywords")
            _options.task = Task::ListKeywords;
        else if (argument == L"--help")
            _options.task = Task::Help;
        else if (argument == L"--timeout")
            _options.timeoutSeconds = secondsOf(next());
        else if (argument == L"--system-changes")
            _options.systemChanges = allows(next());
        else
            return false;
        return true;
    }

    bool readPath() {
        for (const PathOption& option : kPathOptions) {
            if (_arguments[_at] != option.name) continue;
            _options.*option.path = std::filesystem::absolute(next());
            return true;
        }
        return false;
    }

    void readScenario() {
        const std::wstring& argument = _arguments[_at];
        if (argument.empty() || argument[0] == L'-')
            throw Failure("there is no option " + shown(argument), Outcome::Unusable);
        if (!_options.scenario.empty())
            throw Failure("one scenario at a time, and " + shown(argument) + " is a second one",
                          Outcome::Unusable);
        _options.scenario = std::filesystem::absolute(argument);
    }

    const std::vector<std::wstring>& _arguments;
    Options& _options;
    std::size_t _at = 0;
};

}  // namespace

Options readOptions(const std::vector<std::wstring>& arguments,
                    const std::filesystem::path& ownFolder) {
    Options options;
    options.monitor = ownFolder / L"QVK7400SM.exe";
    options.device = ownFolder / L"simulated-device";
    options.recorder = ownFolder / L"recorder" / L"recorder.exe";
    options.spooler = ownFolder / L"simulated-spooler" / L"winspool.drv";
    // A Wine prefix is made for the run; any other system belongs to somebody.
    options.systemChanges = underWine();
    ArgumentReader(arguments, options).read();
    const bool needsScenario = options.task != Task::Help && options.task != Task::ListKeywords;
    if (needsScenario && options.scenario.empty())
        throw Failure("no scenario is given", Outcome::Unusable);
    return options;
}

const char* usageText() {
    return "printpath [options] SCENARIO\n"
           "\n"
           "Plays the print path: makes the status pipe, starts the monitor, writes the records "
           "of\n"
           "the scenario, does what the user does, and checks what the monitor shows.\n"
           "\n"
           "  --monitor FILE   the monitor (default: QVK7400SM.exe beside printpath)\n"
           "  --byte-mode      make a byte pipe instead of a message pipe\n"
           "  --timeout N      seconds to wait for anything awaited (default: 10)\n"
           "  --clean          first forget what the monitor remembers for this user\n"
           "  --system-changes allow|refuse\n"
           "                   allow or refuse --clean and all steps that change the registry, "
           "printers\n"
           "                   or files of this system (default: allow them under Wine, refuse "
           "them elsewhere)\n"
           "  --pictures DIR   where screenshots go (default: they are not saved)\n"
           "  --device DIR     folder of the simulated device library and its pages\n"
           "  --recorder FILE  program that stands in for the browser\n"
           "  --spooler FILE   the simulated spooler, a copy of which stands in Wine's system "
           "folder\n"
           "  --check          only read the scenario, start nothing\n"
           "  --about          print what the scenario is about\n"
           "  --keywords       list the keywords of scenarios\n"
           "  --help           this text\n"
           "\n"
           "Exit code: 0 all as expected, 1 not as expected, 2 wrong options or scenario,\n"
           "3 the monitor crashed, 4 the monitor hung. docs/scenarios.md explains scenarios.\n";
}

}  // namespace printpath
