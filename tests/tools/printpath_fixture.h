#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// Plays scenarios with printpath and the program PLAYED_MONITOR: the monitor, or its double.
namespace printpath_test {

namespace fs = std::filesystem;

constexpr int kAsExpected = 0;
constexpr int kNotAsExpected = 1;
constexpr int kUnusable = 2;
constexpr int kCrashed = 3;
constexpr int kHung = 4;
constexpr DWORD kPatienceMs = 60000;
// A longer time-out for crashes, because Wine writes a back-trace before a program ends.
constexpr const wchar_t* kPatient = L"--timeout 40";

// The Windows path of a file of the Linux build. Wine shows the Linux file system as drive Z.
inline fs::path windowsPath(const std::string& path) {
    return fs::path("Z:" + path).make_preferred();
}

// A path for a quoted text of a scenario, where each backslash must be written twice.
inline std::string doubled(std::string path) {
    for (std::size_t at = 0; (at = path.find('\\', at)) != std::string::npos; at += 2)
        path.insert(at, "\\");
    return path;
}

inline std::string contents(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class PrintpathTest : public testing::Test {
protected:
    // Each test has its own folder, because a crash report of the test before may still be written.
    PrintpathTest() {
        static int tests = 0;
        _folder = fs::temp_directory_path() /
                  ("printpath-test-" + std::to_string(::GetCurrentProcessId()) + "-" +
                   std::to_string(++tests));
        fs::create_directories(_folder);
    }
    ~PrintpathTest() override {
        std::error_code ignored;
        fs::remove_all(_folder, ignored);
    }

    // Plays these lines and returns the exit code of printpath. `output` then has what it printed.
    int play(const std::string& lines, const std::wstring& options = L"--timeout 5") {
        const fs::path scenario = _folder / "scenario.txt";
        std::ofstream(scenario, std::ios::binary) << lines;
        return run(L"--monitor \"" + windowsPath(PLAYED_MONITOR).wstring() + L"\" --pictures \"" +
                   _folder.wstring() + L"\" " + options + L" \"" + scenario.wstring() + L"\"");
    }

    // `input` is what printpath reads; an inheritable handle.
    int run(const std::wstring& arguments, HANDLE input = nullptr) {
        const fs::path log = _folder / "output.txt";
        SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
        const HANDLE out = ::CreateFileW(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit,
                                         CREATE_ALWAYS, 0, nullptr);
        EXPECT_NE(out, INVALID_HANDLE_VALUE);
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = input;
        startup.hStdOutput = startup.hStdError = out;
        std::wstring line = L"\"" + windowsPath(PRINTPATH_PROGRAM).wstring() + L"\" " + arguments;
        PROCESS_INFORMATION process{};
        EXPECT_TRUE(::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                     nullptr, &startup, &process));
        ::WaitForSingleObject(process.hProcess, kPatienceMs);
        DWORD code = 0;
        ::GetExitCodeProcess(process.hProcess, &code);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
        ::CloseHandle(out);
        output = contents(log);
        return static_cast<int>(code);
    }

    bool printed(const std::string& text) const { return output.find(text) != std::string::npos; }

    const fs::path& folder() const { return _folder; }

    std::string output;

private:
    fs::path _folder;
};

}  // namespace printpath_test
