// printpath.exe: plays the print path for the status monitor. docs/scenarios.md explains its use.
#include "tools/printpath/scenario_parser.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/live.h"
#include "tools/printpath/windows/options.h"
#include "tools/printpath/windows/player.h"
#include "tools/printpath/windows/text_file.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <string>
#include <variant>
#include <vector>

namespace printpath {

namespace {

constexpr DWORD kPathUnits = 32768;
constexpr std::size_t kOutputBytes = 65536;

void print(FILE* stream, const std::string& text) {
    std::fputs(text.c_str(), stream);
    std::fflush(stream);
}

std::filesystem::path ownFolder() {
    std::wstring path(kPathUnits, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), kPathUnits));
    return std::filesystem::path(path).parent_path();
}

Scenario readScenario(const std::filesystem::path& file) {
    std::string text;
    if (!readWholeFile(file, text))
        throw Failure(pathText(file) + " could not be read", Outcome::Unusable);
    std::variant<Scenario, ScenarioError> parsed = parseScenario(text);
    if (const auto* error = std::get_if<ScenarioError>(&parsed))
        throw Failure(pathText(file) + ":" + std::to_string(error->line) + ": " + error->message,
                      Outcome::Unusable);
    return std::get<Scenario>(std::move(parsed));
}

Outcome run(const std::vector<std::wstring>& arguments) {
    const Options options = readOptions(arguments, ownFolder());
    if (options.task == Task::Help) {
        print(stdout, usageText());
        return Outcome::AsExpected;
    }
    if (options.task == Task::ListKeywords) {
        for (const Keyword& keyword : keywords())
            print(stdout, std::string(keyword.name) + "\n");
        return Outcome::AsExpected;
    }
    if (options.task == Task::Live) return playLive(options);
    const Scenario scenario = readScenario(options.scenario);
    if (options.task != Task::Play) return Outcome::AsExpected;
    return playScenario(scenario, options);
}

}  // namespace

}  // namespace printpath

int wmain(int count, wchar_t** values) {
    // Binary mode keeps line ends as they are in the scenarios. The output is UTF-8.
    ::_setmode(::_fileno(stdout), _O_BINARY);
    ::_setmode(::_fileno(stderr), _O_BINARY);
    // Without a buffer a console gets the bytes of a letter one by one and cannot show it.
    std::setvbuf(stdout, nullptr, _IOFBF, printpath::kOutputBytes);
    try {
        return static_cast<int>(
            printpath::run(std::vector<std::wstring>(values + 1, values + count)));
    } catch (const printpath::Failure& failure) {
        printpath::print(stderr, std::string("printpath: ") + failure.what() + "\n");
        return static_cast<int>(failure.outcome());
    } catch (const std::exception& error) {
        printpath::print(stderr, std::string("printpath: ") + error.what() + "\n");
        return static_cast<int>(printpath::Outcome::Unusable);
    }
}
