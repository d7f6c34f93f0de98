#pragma once

#include <filesystem>
#include <string>

namespace printpath {

// Stands in for the user's browser: http, https, .htm and .html are opened with the recorder
// program, which appends what it is given to a file. Only in a Wine prefix, where nobody's real
// browser is replaced: elsewhere the constructor throws Failure.
class LinkRecorder {
public:
    // `file` is created empty; its name goes to the recorder in the environment variable
    // kVariable of the monitor.
    LinkRecorder(const std::filesystem::path& program, const std::filesystem::path& file);

    static constexpr wchar_t kVariable[] = L"QVSM_RECORDER_FILE";

    const std::filesystem::path& file() const { return _file; }
    // One line for each address or document: "url https://..." or "page C:\\...".
    std::string opened() const;

private:
    std::filesystem::path _file;
};

}  // namespace printpath
