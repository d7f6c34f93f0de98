#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "strings/string_ids.h"
#include "tests/support/strings_table.h"

// Compares the built library with the language files. The resource compiler has made the library
// and the table generator has made the table, so an error in one of them is noticed.
namespace {

constexpr unsigned kIdsInABlock = 16;
constexpr wchar_t kLibraryBesideTheTests[] = L"..\\bin\\QVK7400SMs.dll";
constexpr unsigned kIdsToTry = 2000;  // much greater than the last id
constexpr WORD kEnglish = 1033;

struct FreeModule {
    using pointer = HMODULE;
    void operator()(HMODULE module) const noexcept { ::FreeLibrary(module); }
};
using Module = std::unique_ptr<HMODULE, FreeModule>;

std::wstring libraryPath() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.rfind(L'\\') + 1) + kLibraryBesideTheTests;
}

class StringsLibraryTest : public testing::Test {
protected:
    void SetUp() override {
        _library.reset(::LoadLibraryExW(libraryPath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
        ASSERT_NE(_library.get(), nullptr) << ::GetLastError();
    }

    // Reads a text from its block: a length and then so many units. Empty when there is no text.
    std::wstring_view textOf(unsigned id, WORD language) const {
        const HRSRC found = ::FindResourceExW(_library.get(), kStringType,
                                              MAKEINTRESOURCEW(id / kIdsInABlock + 1), language);
        if (found == nullptr) return {};
        const HGLOBAL loaded = ::LoadResource(_library.get(), found);
        const auto* units = static_cast<const wchar_t*>(::LockResource(loaded));
        const wchar_t* const end =
            units + ::SizeofResource(_library.get(), found) / sizeof(wchar_t);
        for (unsigned skip = id % kIdsInABlock; skip > 0 && units < end; --skip)
            units += 1 + *units;
        return units < end ? std::wstring_view(units + 1, *units) : std::wstring_view();
    }

    HMODULE library() const { return _library.get(); }

    static inline const LPCWSTR kStringType = reinterpret_cast<LPCWSTR>(RT_STRING);

private:
    Module _library;
};

std::set<WORD> languagesOfTheFiles() {
    std::set<WORD> languages;
    for (unsigned index = 0; index < kStringRowCount; ++index) {
        languages.insert(kStringRows[index].language);
    }
    return languages;
}

BOOL CALLBACK noteLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR languages) {
    reinterpret_cast<std::set<WORD>*>(languages)->insert(language);
    return TRUE;
}

BOOL CALLBACK noteBlock(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR languages) {
    return ::EnumResourceLanguagesW(module, type, name, noteLanguage, languages);
}

TEST_F(StringsLibraryTest, EveryTextOfEveryLanguageIsTheOneInItsFile) {
    ASSERT_GT(kStringRowCount, 0U);
    for (unsigned index = 0; index < kStringRowCount; ++index) {
        const StringRow& row = kStringRows[index];
        EXPECT_EQ(textOf(row.id, row.language), row.text)
            << "id " << row.id << ", language " << row.language;
    }
}

TEST_F(StringsLibraryTest, NoOtherIdHasAText) {
    std::set<std::pair<WORD, unsigned>> known;
    for (unsigned index = 0; index < kStringRowCount; ++index) {
        known.emplace(kStringRows[index].language, kStringRows[index].id);
    }

    for (const WORD language : languagesOfTheFiles()) {
        for (unsigned id = 0; id < kIdsToTry; ++id) {
            if (known.count({language, id}) != 0) continue;
            EXPECT_TRUE(textOf(id, language).empty()) << "id " << id << ", language " << language;
        }
    }
}

TEST_F(StringsLibraryTest, HasBlocksOfTheLanguagesOfTheFilesAndNoOther) {
    std::set<WORD> languages;

    ASSERT_TRUE(::EnumResourceNamesW(library(), kStringType, noteBlock,
                                     reinterpret_cast<LONG_PTR>(&languages)));

    EXPECT_EQ(languages, languagesOfTheFiles());
}

TEST_F(StringsLibraryTest, SearchByExactLanguageDoesNotFallBack) {
    constexpr WORD kEnglishOfGreatBritain = 0x0809;

    EXPECT_TRUE(textOf(IDS_OK, kEnglishOfGreatBritain).empty());
}

TEST_F(StringsLibraryTest, SystemChoosesATextForItsOwnLanguage) {
    wchar_t text[64] = {};

    const int units = ::LoadStringW(library(), IDS_OK, text, static_cast<int>(std::size(text)));

    const std::wstring_view own = textOf(IDS_OK, ::GetUserDefaultUILanguage());
    EXPECT_EQ(own.empty() ? textOf(IDS_OK, kEnglish) : own,
              std::wstring_view(text, static_cast<std::size_t>(units)));
}

TEST(StringsLibraryFileTest, IsALibraryWithoutCode) {
    const Module library(
        ::LoadLibraryExW(libraryPath().c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES));
    ASSERT_NE(library.get(), nullptr) << ::GetLastError();

    const auto* base = reinterpret_cast<const std::byte*>(library.get());
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);

    EXPECT_EQ(headers->OptionalHeader.AddressOfEntryPoint, 0U);
}

}  // namespace
