#pragma once

#include <filesystem>
#include <string>

namespace printpath {

// Replaces the user's browser: http, https, .htm and .html are opened with the recorder program,
// which appends each address or path to a file. This is allowed only in a Wine prefix, where nobody
// uses a real browser. Elsewhere the constructor throws Failure.
class LinkRecorder {
public:
    // Creates `file` empty. The monitor starts the recorder, which finds the name of this file in
    // the environment variable kVariable that it inherits from the monitor.
    LinkRecorder(const std::filesystem::path& program, const std::filesystem::path& file);

    static constexpr wchar_t kVariable[] = L"QVSM_RECORDER_FILE";

    const std::filesystem::path& file() const { return _file; }
    // One line for each address or document: "url https://..." or "page C:\\...".
    std::string opened() const;

private:
    std::filesystem::path _file;
};

}  // namespace printpath
