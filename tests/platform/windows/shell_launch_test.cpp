#include "platform/shell.h"

#include "platform/file.h"
#include "platform/registry.h"
#include "platform/text.h"
#include "platform/thread.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <atomic>
#include <filesystem>
#include <string>

namespace {

using platform::Hive;
using platform::RegistryKey;
using platform::ValueType;

// Registers the recorder program in place of every program that the shell may start.
class ShellLaunchTest : public testing::Test {
protected:
    void SetUp() override {
        char path[MAX_PATH + 1];
        _log = std::string(path, ::GetTempPathA(MAX_PATH, path)) + "contract-recorder.txt";
        ::DeleteFileA(_log.c_str());
        ::SetEnvironmentVariableA("QVSM_RECORDER_FILE", _log.c_str());
    }

    static void setClass(const std::wstring& path, const wchar_t* name, const std::wstring& text) {
        RegistryKey key;
        ASSERT_EQ(key.createForWriting(Hive::LocalMachine, (L"Software\\Classes\\" + path).c_str()),
                  0U);
        ASSERT_EQ(key.write(name, ValueType::String, text.c_str(),
                            static_cast<std::uint32_t>((text.size() + 1) * sizeof(wchar_t))),
                  0U);
    }
    void recordFor(const std::wstring& documentClass, const wchar_t* mark) const {
        setClass(documentClass + L"\\shell\\open\\command", L"",
                 L"\"" + _recorder + L"\" " + mark + L" \"%1\"");
    }
    // The started program runs on its own, so this waits until it has written, at most ten seconds.
    [[nodiscard]] std::string recorded() const {
        std::string log;
        for (int ms = 0; ms < 10'000; ms += 10) {
            if (platform::readFile(_log.c_str(), log) && log.ends_with('\n')) return log;
            platform::sleepFor(10);
        }
        return "nothing was started";
    }

    std::string _log;
    // The path comes from the Linux build. Wine shows the Linux file system as drive Z.
    const std::wstring _recorder =
        std::filesystem::path(std::wstring(L"Z:") + RECORDER_PROGRAM).make_preferred().wstring();
};

TEST_F(ShellLaunchTest, AnAddressReachesTheBrowserUnchanged) {
    setClass(L"https", L"URL Protocol", L"");
    recordFor(L"https", L"address");

    EXPECT_TRUE(platform::openAddress(L"https://www.corvane.example/go/x?a=1&b=%20"));

    EXPECT_EQ(recorded(), "address https://www.corvane.example/go/x?a=1&b=%20\n");
}

TEST_F(ShellLaunchTest, AQuotationMarkInAnAddressStaysInsideTheArgument) {
    setClass(L"https", L"URL Protocol", L"");
    recordFor(L"https", L"address");

    EXPECT_TRUE(platform::openAddress(L"https://www.corvane.example/?a=1\" --other \"2"));

    EXPECT_EQ(recorded(), "address https://www.corvane.example/?a=1%22%20--other%20%222\n");
}

// Closes every message box of this process as long as it exists. So an unexpected box makes a test
// fail and does not block it for ever.
class BoxCloser {
public:
    BoxCloser() {
        std::atomic<std::uint32_t> id{0};
        _thread = platform::startThread(&BoxCloser::run, this, id);
    }
    BoxCloser(const BoxCloser&) = delete;
    BoxCloser& operator=(const BoxCloser&) = delete;
    ~BoxCloser() { stop(); }
    // Stops the counting and returns how many boxes have been closed.
    int stop() {
        ::SetEvent(_stopped);
        if (_thread != nullptr) platform::waitForThread(_thread, INFINITE);
        platform::closeThread(_thread);
        _thread = nullptr;
        return _boxes;
    }

private:
    static std::uint32_t run(void* closer) {
        constexpr DWORD kPollMs = 20;
        auto& self = *static_cast<BoxCloser*>(closer);
        do {
            ::EnumWindows(&BoxCloser::onWindow, reinterpret_cast<LPARAM>(&self));
        } while (::WaitForSingleObject(self._stopped, kPollMs) == WAIT_TIMEOUT);
        return 0;
    }
    static BOOL CALLBACK onWindow(HWND window, LPARAM closer) {
        DWORD process = 0;
        wchar_t name[16];
        ::GetWindowThreadProcessId(window, &process);
        if (::GetClassNameW(window, name, 16) == 0 || std::wstring(name) != L"#32770") return TRUE;
        if (process != ::GetCurrentProcessId()) return TRUE;
        ++reinterpret_cast<BoxCloser*>(closer)->_boxes;
        ::PostMessageW(window, WM_CLOSE, 0, 0);
        return TRUE;
    }

    HANDLE _stopped = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    platform::NativeHandle _thread = nullptr;
    int _boxes = 0;
};

TEST_F(ShellLaunchTest, ADocumentThatCannotBeOpenedFailsWithoutAMessageBox) {
    const std::string folder = _log.substr(0, _log.rfind('\\') + 1);
    const std::string unknown = folder + "contract.unknown-kind";
    ASSERT_TRUE(platform::writeFile(unknown.c_str(), "x"));
    BoxCloser closer;

    EXPECT_FALSE(platform::openDocument((folder + "contract-never-made.HTM").c_str()));
    EXPECT_FALSE(platform::openDocument(unknown.c_str()));

    EXPECT_EQ(closer.stop(), 0);
}

TEST_F(ShellLaunchTest, ADocumentOpensInTheProgramOfItsKind) {
    setClass(L".htm", L"", L"RecordedPage");
    recordFor(L"RecordedPage", L"page");
    const std::string page = _log.substr(0, _log.rfind('\\') + 1) + "contract page.HTM";
    ASSERT_TRUE(platform::writeFile(page.c_str(), "<html>"));

    EXPECT_TRUE(platform::openDocument(page.c_str()));

    EXPECT_NE(recorded().find("contract page.HTM"), std::string::npos) << recorded();
}

TEST_F(ShellLaunchTest, AProgramIsStarted) {
    std::uint32_t error = 0;

    EXPECT_TRUE(platform::startProgram(_recorder.c_str(), error));

    EXPECT_EQ(recorded(), "started\n");
    EXPECT_EQ(error, 0U);
}

}  // namespace
