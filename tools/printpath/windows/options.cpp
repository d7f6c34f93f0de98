#include "tools/printpath/windows/options.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/wide_text.h"
#include "tools/printpath/windows/wine.h"

#include <cwchar>

namespace printpath {

namespace {

constexpr long kMostSeconds = 600;

[[noreturn]] void refuse(const std::string& what) {
    throw Failure(what, Outcome::Unusable);
}

int secondsOf(const std::wstring& text) {
    wchar_t* end = nullptr;
    const long seconds = std::wcstol(text.c_str(), &end, 10);
    if (text.empty() || *end != 0 || seconds < 1 || seconds > kMostSeconds)
        refuse("--timeout needs a number of seconds from 1 to 600, not " + shown(text));
    return static_cast<int>(seconds);
}

bool allows(const std::wstring& text) {
    if (text != L"allow" && text != L"refuse")
        refuse("--system-changes needs \"allow\" or \"refuse\", not " + shown(text));
    return text == L"allow";
}

class ArgumentReader {
public:
    ArgumentReader(const std::vector<std::wstring>& arguments, Options& options)
        : _arguments(arguments), _options(options) {}

    void read() {
        for (; _at < _arguments.size(); ++_at)
            if (!readOption(_arguments[_at])) readScenario(_arguments[_at]);
    }

private:
    const std::wstring& next() {
        if (_at + 1 == _arguments.size()) refuse(utf8FromWide(_arguments[_at]) + " needs a value");
        return _arguments[++_at];
    }

    bool readOption(const std::wstring& option) {
        if (option == L"--clean")
            _options.clean = true;
        else if (option == L"--check")
            _options.task = Task::Check;
        else if (option == L"--keywords")
            _options.task = Task::ListKeywords;
        else if (option == L"--help")
            _options.task = Task::Help;
        else if (option == L"--timeout")
            _options.timeoutSeconds = secondsOf(next());
        else if (option == L"--system-changes")
            _options.systemChanges = allows(next());
        else if (option == L"--monitor")
            _options.monitor = std::filesystem::absolute(next());
        else if (option == L"--pictures")
            _options.pictures = std::filesystem::absolute(next());
        else
            return false;
        return true;
    }

    void readScenario(const std::wstring& argument) {
        if (argument.empty() || argument[0] == L'-')
            refuse("there is no option " + shown(argument));
        if (!_options.scenario.empty())
            refuse("one scenario at a time, and " + shown(argument) + " is a second one");
        _options.scenario = std::filesystem::absolute(argument);
        if (argument == L"live") _options.task = Task::Live;
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
    // A Wine prefix is made for one run and may be changed. Any other system belongs to a user, who
    // must allow changes with an option.
    options.systemChanges = underWine();
    ArgumentReader(arguments, options).read();
    const bool needsScenario = options.task == Task::Play || options.task == Task::Check;
    if (needsScenario && options.scenario.empty()) refuse("no scenario is given");
    return options;
}

const char* usageText() {
    return R"(printpath [options] SCENARIO
printpath [options] live

Plays the print path: creates the status pipe, starts the monitor, writes the records of the
scenario, does what the user does, and checks what the monitor shows. "live" takes the steps of a
scenario one by one from the keyboard; "help" there says more.

  --monitor FILE   the monitor (default: QVK7400SM.exe beside printpath)
  --pictures DIR   where screenshots go (default: they are not saved)
  --timeout N      how many seconds each wait lasts at most (default: 10)
  --clean          first forget what the monitor remembers for this user
  --system-changes allow|refuse
                   allow or refuse --clean and all steps that change the registry, printers or
                   files of this system (default: allow them under Wine, refuse them elsewhere);
                   values of the spooler and the driver "Beamline test driver" stay afterwards
  --check          only read the scenario, start nothing
  --keywords       list the keywords of scenarios
  --help           this text

Exit code: 0 all as expected, or the end of "live", 1 not as expected, 2 wrong options or scenario,
3 the monitor crashed, 4 the monitor hung. docs/scenarios.md explains scenarios.
)";
}

}  // namespace printpath
