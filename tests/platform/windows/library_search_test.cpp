#include "platform/library_search.h"

#include "platform/dynamic_library.h"
#include "platform/shell.h"
#include "platform/spooler.h"
#include "platform/text.h"
#include "platform/xml_query.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <string>

namespace {

using platform::DynamicLibrary;

constexpr wchar_t kPlantRan[] = L"PLANTED_LIBRARY_RAN";

bool hasPlantRun() {
    return ::GetEnvironmentVariableW(kPlantRan, nullptr, 0) != 0;
}

std::wstring ownFolder() {
    wchar_t program[MAX_PATH + 1];
    const std::wstring path(program, ::GetModuleFileNameW(nullptr, program, MAX_PATH));
    return path.substr(0, path.rfind(L'\\'));
}

std::string fileOf(const wchar_t* module) {
    wchar_t path[MAX_PATH + 1];
    const HMODULE loaded = ::GetModuleHandleW(module);
    if (loaded == nullptr) return "not loaded";
    return platform::narrowed({path, ::GetModuleFileNameW(loaded, path, MAX_PATH)});
}

std::string systemFile(const wchar_t* name) {
    wchar_t folder[MAX_PATH + 1];
    const std::wstring system(folder, ::GetSystemDirectoryW(folder, MAX_PATH));
    return platform::narrowed(system + L'\\' + name);
}

// The folder of this program contains a planted library of every name below. Wine prefers these
// files to its own libraries, as Windows does for most names.
class LibrarySearchTest : public testing::Test {
protected:
    void SetUp() override { ::SetEnvironmentVariableW(kPlantRan, nullptr); }
};

TEST_F(LibrarySearchTest, APlantedLibraryRunsWhenItIsLoadedByItsBareName) {
    const DynamicLibrary planted(L"version.dll");

    EXPECT_NE(planted.handle(), nullptr);
    EXPECT_TRUE(hasPlantRun()) << "else the tests below prove nothing";
}

TEST_F(LibrarySearchTest, LibrariesOfTheSystemComeFromItsOwnFolder) {
    std::string text;
    EXPECT_TRUE(platform::folderPath(platform::Folder::ProgramFiles, text));
    EXPECT_TRUE(platform::queryXml("<a>1</a>", "//a", text));
    platform::prepareSpooler();

    for (const wchar_t* const name :
         {L"shell32.dll", L"ole32.dll", L"oleaut32.dll", L"winspool.drv"}) {
        EXPECT_STRCASEEQ(fileOf(name).c_str(), systemFile(name).c_str());
    }
    EXPECT_FALSE(hasPlantRun());
}

TEST_F(LibrarySearchTest, ALibraryOfAnotherFolderIsNotFoundByItsBareName) {
    ASSERT_TRUE(::SetCurrentDirectoryW((ownFolder() + L"\\current").c_str()));
    ::SetEnvironmentVariableW(L"PATH", (ownFolder() + L"\\path").c_str());
    ASSERT_NE(DynamicLibrary(L"in-current-folder.dll").handle(), nullptr);
    ASSERT_NE(DynamicLibrary(L"in-path.dll").handle(), nullptr);

    platform::keepLibrarySearchToOwnAndSystemFolder();

    EXPECT_EQ(DynamicLibrary(L"in-current-folder.dll").handle(), nullptr);
    EXPECT_EQ(DynamicLibrary(L"in-path.dll").handle(), nullptr);
    EXPECT_NE(DynamicLibrary(L"beside-program.dll").handle(), nullptr);
    EXPECT_NE(DynamicLibrary(L"winmm.dll").handle(), nullptr) << "of the system";
}

}  // namespace
