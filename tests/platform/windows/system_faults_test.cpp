// What the platform does when functions of the system fail that never fail in a test by themselves,
// and what it asks of them where Wine shows no difference.
// A program of its own, because it replaces these functions for the whole program.
#include "platform/file.h"
#include "platform/lock.h"
#include "platform/message_pump.h"
#include "platform/pipe.h"
#include "platform/process.h"
#include "platform/registry.h"
#include "platform/resource_text.h"
#include "platform/shell.h"
#include "platform/spooler.h"
#include "platform/thread.h"
#include "platform/trace_line.h"
#include "platform/xml_query.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <atomic>
#include <cstdint>
#include <cwchar>
#include <optional>
#include <string>
#include <vector>

namespace {

template <typename Function>
Function real(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(library), name)));
}

// What the functions below do for the test that runs. By default they do what the system's do.
struct Faults {
    std::optional<LONGLONG> fileSize;  // -1: the question fails
    bool readsFail = false;
    std::optional<DWORD> writtenAtOnce;  // bytes; the rest is not written
    bool writesFail = false;
    // The nth question for the user's languages fails; 0: none.
    int failingLanguageQuestion = 0;
    int languageQuestions = 0;
    std::optional<std::wstring> languages;  // each name ends with a NUL
    const wchar_t* localeName = nullptr;
    std::optional<LANGID> interfaceLanguage;
    bool versionFails = false;
    bool resourcesFail = false;
    bool locksFail = false;
    bool threadsFail = false;
    const wchar_t* missingLibrary = nullptr;
    bool exitsAreNoticed = false;
    int handlesClosed = 0, keysClosed = 0;
    DWORD reservedArguments = 0;    // of the registry's functions, together
    std::wstring textOfTheMachine;  // every text value below the local machine
    bool hooksFail = false;
    bool postsFail = false;
    int hooksSet = 0, hooksRemoved = 0;
} faults;

BOOL WINAPI getFileSize(HANDLE file, PLARGE_INTEGER size) {
    if (!faults.fileSize) {
        static const auto get = real<decltype(&::GetFileSizeEx)>(L"kernel32.dll", "GetFileSizeEx");
        return get(file, size);
    }
    size->QuadPart = *faults.fileSize < 0 ? 0 : *faults.fileSize;
    return *faults.fileSize >= 0;
}

BOOL WINAPI readBytes(HANDLE file, LPVOID to, DWORD wanted, LPDWORD got, LPOVERLAPPED overlapped) {
    static const auto readFile = real<decltype(&::ReadFile)>(L"kernel32.dll", "ReadFile");
    return !faults.readsFail && readFile(file, to, wanted, got, overlapped);
}

BOOL WINAPI writeBytes(HANDLE file, LPCVOID from, DWORD count, LPDWORD written,
                       LPOVERLAPPED overlapped) {
    static const auto writeFile = real<decltype(&::WriteFile)>(L"kernel32.dll", "WriteFile");
    if (faults.writtenAtOnce && count > *faults.writtenAtOnce) count = *faults.writtenAtOnce;
    return !faults.writesFail && writeFile(file, from, count, written, overlapped);
}

BOOL WINAPI getLanguages(DWORD flags, PULONG count, PZZWSTR names, PULONG units) {
    using Get = decltype(&::GetUserPreferredUILanguages);
    static const auto get = real<Get>(L"kernel32.dll", "GetUserPreferredUILanguages");
    if (++faults.languageQuestions == faults.failingLanguageQuestion) return FALSE;
    if (faults.languages) {
        *units = static_cast<ULONG>(faults.languages->size()) + 1;
        if (names != nullptr) faults.languages->copy(names, faults.languages->size());
        return TRUE;
    }
    return get(flags, count, names, units);
}

int WINAPI getLocaleName(LPWSTR name, int units) {
    using Get = decltype(&::GetUserDefaultLocaleName);
    static const auto get = real<Get>(L"kernel32.dll", "GetUserDefaultLocaleName");
    if (faults.localeName == nullptr) return get(name, units);
    std::wcsncpy(name, faults.localeName, static_cast<std::size_t>(units));
    return static_cast<int>(std::wcslen(name)) + 1;
}

LANGID WINAPI getInterfaceLanguage() {
    using Get = decltype(&::GetUserDefaultUILanguage);
    static const auto get = real<Get>(L"kernel32.dll", "GetUserDefaultUILanguage");
    return faults.interfaceLanguage ? *faults.interfaceLanguage : get();
}

BOOL WINAPI getVersion(LPOSVERSIONINFOW version) {
    using Get = decltype(&::GetVersionExW);
    static const auto get = real<Get>(L"kernel32.dll", "GetVersionExW");
    return !faults.versionFails && get(version);
}

HGLOBAL WINAPI loadResource(HMODULE module, HRSRC found) {
    static const auto load = real<decltype(&::LoadResource)>(L"kernel32.dll", "LoadResource");
    return faults.resourcesFail ? nullptr : load(module, found);
}

LPVOID WINAPI lockResource(HGLOBAL loaded) {
    static const auto lock = real<decltype(&::LockResource)>(L"kernel32.dll", "LockResource");
    return faults.locksFail ? nullptr : lock(loaded);
}

HANDLE WINAPI createThread(LPSECURITY_ATTRIBUTES rights, SIZE_T stack, LPTHREAD_START_ROUTINE start,
                           LPVOID parameter, DWORD flags, LPDWORD id) {
    static const auto create = real<decltype(&::CreateThread)>(L"kernel32.dll", "CreateThread");
    return faults.threadsFail ? nullptr : create(rights, stack, start, parameter, flags, id);
}

HMODULE WINAPI loadLibrary(LPCWSTR name, HANDLE file, DWORD flags) {
    static const auto load = real<decltype(&::LoadLibraryExW)>(L"kernel32.dll", "LoadLibraryExW");
    if (faults.missingLibrary == nullptr || std::wcscmp(name, faults.missingLibrary) != 0)
        return load(name, file, flags);
    ::SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
}

constexpr UINT kNoticedExit = 99;

void WINAPI exitProcess(UINT code) {
    ::TerminateProcess(::GetCurrentProcess(), faults.exitsAreNoticed ? kNoticedExit : code);
}

BOOL WINAPI closeHandle(HANDLE handle) {
    static const auto close = real<decltype(&::CloseHandle)>(L"kernel32.dll", "CloseHandle");
    if (handle != nullptr) ++faults.handlesClosed;
    return close(handle);
}

LSTATUS WINAPI openKey(HKEY root, LPCWSTR path, DWORD reserved, REGSAM rights, PHKEY key) {
    static const auto open = real<decltype(&::RegOpenKeyExW)>(L"advapi32.dll", "RegOpenKeyExW");
    faults.reservedArguments |= reserved;
    return open(root, path, reserved, rights, key);
}

LSTATUS WINAPI createKey(HKEY root, LPCWSTR path, DWORD reserved, LPWSTR kind, DWORD options,
                         REGSAM rights, LPSECURITY_ATTRIBUTES security, PHKEY key, LPDWORD found) {
    static const auto create =
        real<decltype(&::RegCreateKeyExW)>(L"advapi32.dll", "RegCreateKeyExW");
    faults.reservedArguments |= reserved;
    return create(root, path, reserved, kind, options, rights, security, key, found);
}

LSTATUS WINAPI closeKey(HKEY key) {
    static const auto close = real<decltype(&::RegCloseKey)>(L"advapi32.dll", "RegCloseKey");
    ++faults.keysClosed;
    return close(key);
}

LSTATUS WINAPI setValue(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* value,
                        DWORD bytes) {
    static const auto set = real<decltype(&::RegSetValueExW)>(L"advapi32.dll", "RegSetValueExW");
    faults.reservedArguments |= reserved;
    return set(key, name, reserved, type, value, bytes);
}

LSTATUS WINAPI getText(HKEY, LPCWSTR, LPCWSTR, DWORD, LPDWORD, PVOID text, LPDWORD bytes) {
    const std::wstring& value = faults.textOfTheMachine;
    if (*bytes <= value.size() * sizeof(wchar_t)) return ERROR_MORE_DATA;
    *std::copy(value.begin(), value.end(), static_cast<wchar_t*>(text)) = L'\0';
    return ERROR_SUCCESS;
}

HHOOK WINAPI setHook(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
    using Set = decltype(&::SetWindowsHookExW);
    static const auto set = real<Set>(L"user32.dll", "SetWindowsHookExW");
    if (faults.hooksFail) return nullptr;
    ++faults.hooksSet;
    return set(kind, procedure, module, thread);
}

BOOL WINAPI removeHook(HHOOK hook) {
    using Remove = decltype(&::UnhookWindowsHookEx);
    static const auto remove = real<Remove>(L"user32.dll", "UnhookWindowsHookEx");
    ++faults.hooksRemoved;
    return remove(hook);
}

BOOL WINAPI postToThread(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam) {
    using Post = decltype(&::PostThreadMessageW);
    static const auto post = real<Post>(L"user32.dll", "PostThreadMessageW");
    return !faults.postsFail && post(thread, message, wParam, lParam);
}

}  // namespace

// In this program every call of these functions goes through these pointers instead of those in the
// system's import libraries.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's names
decltype(&::GetFileSizeEx) __imp_GetFileSizeEx = &getFileSize;
decltype(&::ReadFile) __imp_ReadFile = &readBytes;
decltype(&::WriteFile) __imp_WriteFile = &writeBytes;
decltype(&::GetUserPreferredUILanguages) __imp_GetUserPreferredUILanguages = &getLanguages;
decltype(&::GetUserDefaultLocaleName) __imp_GetUserDefaultLocaleName = &getLocaleName;
decltype(&::GetUserDefaultUILanguage) __imp_GetUserDefaultUILanguage = &getInterfaceLanguage;
decltype(&::GetVersionExW) __imp_GetVersionExW = &getVersion;
decltype(&::LoadResource) __imp_LoadResource = &loadResource;
decltype(&::LockResource) __imp_LockResource = &lockResource;
decltype(&::CreateThread) __imp_CreateThread = &createThread;
decltype(&::CloseHandle) __imp_CloseHandle = &closeHandle;
decltype(&::ExitProcess) __imp_ExitProcess = &exitProcess;
decltype(&::RegOpenKeyExW) __imp_RegOpenKeyExW = &openKey;
decltype(&::RegCreateKeyExW) __imp_RegCreateKeyExW = &createKey;
decltype(&::RegCloseKey) __imp_RegCloseKey = &closeKey;
decltype(&::RegSetValueExW) __imp_RegSetValueExW = &setValue;
decltype(&::RegGetValueW) __imp_RegGetValueW = &getText;
decltype(&::LoadLibraryExW) __imp_LoadLibraryExW = &loadLibrary;
decltype(&::SetWindowsHookExW) __imp_SetWindowsHookExW = &setHook;
decltype(&::UnhookWindowsHookEx) __imp_UnhookWindowsHookEx = &removeHook;
decltype(&::PostThreadMessageW) __imp_PostThreadMessageW = &postToThread;
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
}

namespace {

class SystemFaultsTest : public testing::Test {
protected:
    SystemFaultsTest() { faults = {}; }
    ~SystemFaultsTest() override { faults = {}; }
};

class FileFaultsTest : public SystemFaultsTest {
protected:
    FileFaultsTest() {
        char folder[MAX_PATH] = {};
        ::GetTempPathA(MAX_PATH, folder);
        _path = std::string(folder) + "system faults.txt";
    }
    ~FileFaultsTest() override { ::DeleteFileA(_path.c_str()); }

    [[nodiscard]] bool write(std::string_view text) const {
        return platform::writeFile(_path.c_str(), text);
    }
    [[nodiscard]] bool read(std::string& text) const {
        return platform::readFile(_path.c_str(), text);
    }

private:
    std::string _path;
};

TEST_F(FileFaultsTest, AFileThatBecomesShorterWhileItIsReadIsReadToItsEnd) {
    ASSERT_TRUE(write("short"));
    std::string text;
    faults.fileSize = 100;

    EXPECT_TRUE(read(text));
    EXPECT_EQ(text, "short");
}

TEST_F(FileFaultsTest, AFileWhoseSizeIsNotKnownIsNotRead) {
    ASSERT_TRUE(write("content"));
    std::string text = "before";
    faults.fileSize = -1;

    EXPECT_FALSE(read(text));
    EXPECT_EQ(text, "before");
}

TEST_F(FileFaultsTest, AFileThatCannotBeReadLeavesTheTextAsItWas) {
    ASSERT_TRUE(write("content"));
    std::string text = "before";
    faults.readsFail = true;

    EXPECT_FALSE(read(text));
    EXPECT_EQ(text, "before");
}

TEST_F(FileFaultsTest, AFileThatIsWrittenInPiecesIsWhole) {
    std::string text;
    for (const DWORD piece : {1U, 3U}) {
        faults.writtenAtOnce = piece;

        EXPECT_TRUE(write("content"));
        EXPECT_TRUE(read(text));
        EXPECT_EQ(text, "content");
    }
}

TEST_F(FileFaultsTest, AFullDiskIsAFailure) {
    faults.writtenAtOnce = 0;

    EXPECT_FALSE(write("content"));
}

TEST_F(FileFaultsTest, AFileThatCannotBeWrittenIsAFailure) {
    faults.writesFail = true;

    EXPECT_FALSE(write("content"));
}

class LanguageFaultsTest : public SystemFaultsTest {};

TEST_F(LanguageFaultsTest, TheLanguageOfTheUsersFormatsStandsInForThoseOfTheInterface) {
    faults.localeName = L"pl-PL";
    for (const int question : {1, 2}) {
        faults.failingLanguageQuestion = question;
        faults.languageQuestions = 0;

        EXPECT_EQ(platform::preferredLanguages(), (std::vector<std::wstring>{L"pl-PL"}));
        EXPECT_EQ(faults.languageQuestions, question);
    }
}

TEST_F(LanguageFaultsTest, TheShortestNameOfALanguageCounts) {
    faults.failingLanguageQuestion = 1;
    faults.localeName = L"x";

    EXPECT_EQ(platform::preferredLanguages(), (std::vector<std::wstring>{L"x"}));
}

TEST_F(LanguageFaultsTest, AUserWithoutAnyLanguageHasNoNames) {
    faults.failingLanguageQuestion = 1;
    faults.localeName = L"";

    EXPECT_TRUE(platform::preferredLanguages().empty());
}

TEST_F(LanguageFaultsTest, TheFormatsAreNotAskedWhereTheInterfaceHasALanguage) {
    faults.localeName = L"pl-PL";

    const std::vector<std::wstring> names = platform::preferredLanguages();

    ASSERT_FALSE(names.empty());
    EXPECT_NE(names.back(), L"pl-PL");
}

TEST_F(LanguageFaultsTest, EveryLanguageOfTheInterfaceIsNamedInItsOrder) {
    faults.languages = std::wstring(L"pl-PL\0de\0zh-Hans-CN\0", 20);

    EXPECT_EQ(platform::preferredLanguages(),
              (std::vector<std::wstring>{L"pl-PL", L"de", L"zh-Hans-CN"}));
}

TEST_F(LanguageFaultsTest, TheUsersLanguageStandsInForThatOfTheInterface) {
    faults.interfaceLanguage = LANGID{0};
    EXPECT_EQ(platform::userInterfaceLanguage(), ::GetUserDefaultLangID());

    faults.interfaceLanguage = LANGID{1};
    EXPECT_EQ(platform::userInterfaceLanguage(), 1);
}

TEST_F(LanguageFaultsTest, TheVersionOfTheSystemMayBeUnknown) {
    faults.versionFails = true;

    EXPECT_FALSE(platform::systemVersionKnown());
}

using ResourceFaultsTest = SystemFaultsTest;

TEST_F(ResourceFaultsTest, ATextThatCannotBeLoadedIsMissing) {
    constexpr platform::LanguageId kEnglish = 0x0409;
    const platform::NativeHandle texts = platform::openResourceLibrary(L"contract_texts.dll");
    std::wstring text;
    ASSERT_TRUE(platform::resourceText(texts, 300, kEnglish, text));

    faults.resourcesFail = true;
    EXPECT_FALSE(platform::resourceText(texts, 300, kEnglish, text));
    EXPECT_EQ(text, L"");

    faults.resourcesFail = false;
    faults.locksFail = true;
    EXPECT_FALSE(platform::resourceText(texts, 300, kEnglish, text));
    EXPECT_EQ(text, L"");
}

using PipeFaultsTest = SystemFaultsTest;

TEST_F(PipeFaultsTest, AMessageThatIsWrittenInPartIsAFailure) {
    HANDLE from = nullptr, to = nullptr;
    ASSERT_TRUE(::CreatePipe(&from, &to, nullptr, 0));

    EXPECT_TRUE(platform::writePipe(to, "content", 7));
    faults.writtenAtOnce = 3;
    EXPECT_FALSE(platform::writePipe(to, "content", 7));
    ::CloseHandle(from);
    ::CloseHandle(to);
}

using EndOfProcessDeathTest = SystemFaultsTest;

TEST_F(EndOfProcessDeathTest, TheProcessEndsWithoutTheCleanUpOfItsLibraries) {
    faults.exitsAreNoticed = true;

    EXPECT_EXIT(platform::endProcess(7), testing::ExitedWithCode(7), "");
}

// The trace asks for its file once, so each question needs a process of its own.
using TraceOfTheMachineDeathTest = SystemFaultsTest;

TEST_F(TraceOfTheMachineDeathTest, IsKeptWhereItsNameHasRoomForThatOfTheOlderFile) {
    constexpr std::size_t kMostUnits = 1024 - 5;  // ".old" and its end
    constexpr wchar_t kName[] = L"trace of the machine.txt";
    wchar_t folder[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, folder);
    std::wstring path = folder;
    while (path.size() + std::size(kName) < kMostUnits)
        path += L".\\";
    path += std::wstring(kMostUnits - path.size() - std::size(kName) + 1, L'x') + kName;
    ::SetEnvironmentVariableW(L"QVSM_TRACE", nullptr);
    const auto endWithTheAnswer = [] { platform::endProcess(platform::isTraceKept() ? 1 : 0); };

    faults.textOfTheMachine = path;
    EXPECT_EXIT(endWithTheAnswer(), testing::ExitedWithCode(1), "");
    faults.textOfTheMachine = path + L"x";
    EXPECT_EXIT(endWithTheAnswer(), testing::ExitedWithCode(0), "");
    ::DeleteFileW(path.c_str());
}

using HandlesTest = SystemFaultsTest;

TEST_F(HandlesTest, AMutexGivesItsHandleBack) {
    { const platform::KernelMutex mutex; }

    EXPECT_EQ(faults.handlesClosed, 1);
}

TEST_F(HandlesTest, ARegistryKeyGivesItsHandleBack) {
    {
        platform::RegistryKey key;
        ASSERT_EQ(key.openForReading(platform::Hive::CurrentUser, L"Software"), 0U);
    }

    EXPECT_EQ(faults.keysClosed, 1);
}

using RegistryCallsTest = SystemFaultsTest;

TEST_F(RegistryCallsTest, ArgumentsThatTheSystemReservesAreZero) {
    constexpr wchar_t kPath[] = L"Software\\Contract system faults";
    platform::RegistryKey key;

    EXPECT_EQ(key.createForWriting(platform::Hive::CurrentUser, kPath), 0U);
    EXPECT_EQ(key.write(L"value", platform::ValueType::String, L"1", 4), 0U);
    EXPECT_EQ(key.openForReading(platform::Hive::CurrentUser, kPath), 0U);

    EXPECT_EQ(faults.reservedArguments, 0U);
}

using ThreadFaultsTest = SystemFaultsTest;

TEST_F(ThreadFaultsTest, AThreadThatTheSystemRefusesIsNull) {
    std::atomic<std::uint32_t> id{0};
    faults.threadsFail = true;

    EXPECT_EQ(platform::startThread([](void*) -> std::uint32_t { return 0; }, nullptr, id),
              nullptr);
}

TEST_F(HandlesTest, AThreadGivesItsHandleBack) {
    std::atomic<std::uint32_t> id{0};
    const platform::NativeHandle thread =
        platform::startThread([](void*) -> std::uint32_t { return 0; }, nullptr, id);
    ASSERT_EQ(platform::waitForThread(thread, platform::kNoTimeout), 0U);
    faults.handlesClosed = 0;

    platform::closeThread(thread);

    EXPECT_EQ(faults.handlesClosed, 1);
}

// No other test of this program may use these libraries: a function that was found is kept.
class LibraryFaultsTest : public SystemFaultsTest {};

TEST_F(LibraryFaultsTest, WithoutAShellNothingIsOpened) {
    faults.missingLibrary = L"shell32.dll";
    std::uint32_t error = 0;
    std::string path = "before";

    EXPECT_FALSE(platform::openAddress(L"http://contract.example/"));
    EXPECT_FALSE(platform::startProgram(L"contract.exe", error));
    EXPECT_EQ(error, static_cast<std::uint32_t>(ERROR_MOD_NOT_FOUND));
    EXPECT_FALSE(platform::openDocument("contract.txt"));
    EXPECT_FALSE(platform::folderPath(platform::Folder::ProgramFiles, path));
    EXPECT_EQ(path, "before");
}

TEST_F(LibraryFaultsTest, WithoutASpoolerPrintersHaveNoData) {
    faults.missingLibrary = L"winspool.drv";
    platform::Printer printer;
    char data[8] = {};

    EXPECT_FALSE(printer.open(L"contract"));
    EXPECT_EQ(printer.readData(L"value", data, sizeof data), platform::kProcedureNotFound);
    EXPECT_EQ(printer.readDataOf(L"key", L"value", data, sizeof data),
              platform::kProcedureNotFound);
}

TEST_F(LibraryFaultsTest, PagesAreNotReadWithoutBothLibrariesOfTheParser) {
    std::string text;
    for (const wchar_t* const library : {L"ole32.dll", L"oleaut32.dll"}) {
        faults.missingLibrary = library;

        EXPECT_FALSE(platform::queryXml("<a>1</a>", "/a", text));
    }
    faults.missingLibrary = nullptr;

    EXPECT_TRUE(platform::queryXml("<a>1</a>", "/a", text));
    EXPECT_EQ(text, "1");
}

class MessageFaultsTest : public SystemFaultsTest {
protected:
    static bool workNext() {
        return platform::workInNextMessage([](void*) {}, nullptr);
    }
};

TEST_F(MessageFaultsTest, WorkIsRefusedWhereTheSystemRefusesAHook) {
    faults.hooksFail = true;

    EXPECT_FALSE(workNext());
    EXPECT_FALSE(platform::isMessageWaiting());
}

TEST_F(MessageFaultsTest, WorkIsRefusedWhereTheSystemTakesNoMessageAndLeavesNoHook) {
    faults.postsFail = true;

    EXPECT_FALSE(workNext());
    EXPECT_EQ(faults.hooksSet, 1);
    EXPECT_EQ(faults.hooksRemoved, 1);
}

TEST_F(MessageFaultsTest, WorkThatIsDoneLeavesNoHook) {
    ASSERT_TRUE(workNext());

    EXPECT_TRUE(platform::dispatchOneMessage());

    EXPECT_EQ(faults.hooksSet, 1);
    EXPECT_EQ(faults.hooksRemoved, 1);
}

TEST(KeyTest, APressedKeyAlsoBecomesALetter) {
    const HWND window = ::CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        ::GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(::PostMessageW(window, WM_KEYDOWN, VK_RETURN, 1));

    EXPECT_TRUE(platform::dispatchOneMessage());

    MSG letter{};
    EXPECT_TRUE(::PeekMessageW(&letter, window, WM_CHAR, WM_CHAR, PM_REMOVE));
    EXPECT_EQ(letter.wParam, WPARAM{L'\r'});
    ::DestroyWindow(window);
}

}  // namespace
