#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace printpath {

enum class Task { Play, Live, Check, ListKeywords, Help };

struct Options {
    Task task = Task::Play;
    std::filesystem::path scenario;  // for Task::Live a name in the current folder
    std::filesystem::path monitor;   // default: QVK7400SM.exe beside printpath
    std::filesystem::path device;    // the folder simulated-device beside printpath
    std::filesystem::path recorder;  // recorder\recorder.exe beside printpath
    std::filesystem::path spooler;   // simulated-spooler\winspool.drv beside printpath
    std::filesystem::path pictures;  // empty: screenshots are not saved
    bool clean = false;              // first remove what the monitor remembers of earlier runs
    // Whether steps may change registry, printers and files of this system.
    bool systemChanges = false;
    int timeoutSeconds = 10;
};

// Reads the arguments, which do not include the name of the program. Throws Failure (Unusable) with
// the name of an argument that is wrong.
Options readOptions(const std::vector<std::wstring>& arguments,
                    const std::filesystem::path& ownFolder);

// The text of --help.
const char* usageText();

}  // namespace printpath
