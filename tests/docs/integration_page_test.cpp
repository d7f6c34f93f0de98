// What docs/integration.md tells engineers of the printer's driver.
#include "tools/printpath/windows/alert_windows.h"
#include "tools/printpath/windows/handle.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr DWORD kPatienceMs = 20000;
constexpr DWORD kPollMs = 20;

std::string contents(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::wstring windowsPath(const std::string& path) {
    return L"Z:" + std::wstring(path.begin(), path.end());
}

// The dialogs of other processes that show this text.
std::vector<HWND> alertsWith(const std::wstring& text) {
    std::vector<HWND> found;
    for (HWND window = nullptr;
         (window = ::FindWindowExW(nullptr, window, L"#32770", nullptr)) != nullptr;)
        if (::IsWindowVisible(window) &&
            printpath::allTexts(window).find(text) != std::wstring::npos)
            found.push_back(window);
    return found;
}

// The example with a pipe for what is typed and one for what it prints.
class Example {
public:
    explicit Example(const std::wstring& arguments) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        HANDLE ends[4] = {};
        EXPECT_TRUE(::CreatePipe(&ends[0], &ends[1], &inherited, 0));
        EXPECT_TRUE(::CreatePipe(&ends[2], &ends[3], &inherited, 0));
        const printpath::Handle input(ends[0]);
        const printpath::Handle output(ends[3]);
        _typed.reset(ends[1]);
        _printed.reset(ends[2]);
        ::SetHandleInformation(ends[1], HANDLE_FLAG_INHERIT, 0);
        ::SetHandleInformation(ends[2], HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = ends[0];
        startup.hStdOutput = startup.hStdError = ends[3];
        std::wstring line = L"\"" + windowsPath(EXAMPLE) + L"\" " + arguments;
        PROCESS_INFORMATION process{};
        EXPECT_TRUE(::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                     nullptr, &startup, &process));
        const printpath::Handle thread(process.hThread);
        _process.reset(process.hProcess);
    }

    void typeEnter() {
        DWORD written = 0;
        EXPECT_TRUE(::WriteFile(_typed.get(), "\n", 1, &written, nullptr));
    }

    bool running() const { return ::WaitForSingleObject(_process.get(), 0) == WAIT_TIMEOUT; }

    DWORD exitCode() {
        EXPECT_EQ(::WaitForSingleObject(_process.get(), kPatienceMs), WAIT_OBJECT_0);
        DWORD code = 0;
        ::GetExitCodeProcess(_process.get(), &code);
        return code;
    }

    // All that it has printed until its end.
    std::string printed() {
        std::string text;
        char byte = 0;
        DWORD count = 0;
        while (::ReadFile(_printed.get(), &byte, 1, &count, nullptr) && count == 1)
            text += byte;
        return text;
    }

private:
    printpath::Handle _typed;
    printpath::Handle _printed;
    printpath::Handle _process;
};

TEST(IntegrationPage, ShowsTheExampleAsItIsCompiled) {
    const std::string page = contents(BEAMLINE_SOURCES "/docs/integration.md");
    const std::string example = contents(BEAMLINE_SOURCES "/docs/examples/print_path.c");

    ASSERT_FALSE(example.empty());
    EXPECT_NE(page.find("```c\n" + example + "```\n"), std::string::npos)
        << "docs/integration.md must hold docs/examples/print_path.c to the letter";
}

TEST(IntegrationPage, TheExampleOpensAnAlertThatItsDocumentCloses) {
    Example example(L"\"" + windowsPath(MONITOR) + L"\"");
    const ULONGLONG end = ::GetTickCount64() + kPatienceMs;
    while (alertsWith(L"out of paper").empty() && ::GetTickCount64() < end)
        ::Sleep(kPollMs);
    ASSERT_EQ(alertsWith(L"out of paper").size(), 1U);
    EXPECT_NE(printpath::textOf(alertsWith(L"out of paper")[0]).find(L"Example printer"),
              std::wstring::npos);
    EXPECT_TRUE(example.running());

    example.typeEnter();

    EXPECT_EQ(example.exitCode(), 0U);
    EXPECT_NE(example.printed().find("the monitor has ended with exit code 0"), std::string::npos);
    EXPECT_TRUE(alertsWith(L"out of paper").empty());
}

TEST(IntegrationPage, TheExampleSaysWhyItCannotStart) {
    Example without(L"");
    EXPECT_EQ(without.exitCode(), 2U);
    EXPECT_NE(without.printed().find("usage: print_path MONITOR.EXE"), std::string::npos);

    Example missing(L"Z:\\none.exe");
    EXPECT_EQ(missing.exitCode(), 1U);
    EXPECT_NE(missing.printed().find("system error 2"), std::string::npos);
}

}  // namespace
