#include "platform/resource_text.h"

#include <windows.h>
#include <array>
#include <cstddef>
#include <limits>
#include <string_view>

namespace platform {
namespace {

constexpr std::uint32_t kTextsPerBlock = 16;

// The block of texts that contains `id`, in exactly this language. Primary language 0 is refused
// because the system would then choose a language itself.
HRSRC findBlock(HMODULE module, std::uint32_t id, LanguageId language) noexcept {
    if (module == nullptr || PRIMARYLANGID(language) == LANG_NEUTRAL) return nullptr;
    const std::uint32_t block = id / kTextsPerBlock + 1;
    // Equally right with >=: nobody has a text with an id beyond a million.
    if (block > std::numeric_limits<WORD>::max()) return nullptr;  // no resource has this number
    return ::FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(block), language);
}

// A block is 16 texts in a row. Each is its length in units and then the units, without a NUL.
std::wstring_view entryOf(std::wstring_view block, std::uint32_t index) noexcept {
    while (!block.empty()) {
        const auto units = static_cast<std::size_t>(block.front());
        block.remove_prefix(1);
        if (units > block.size()) return {};
        if (index == 0) return block.substr(0, units);
        block.remove_prefix(units);
        --index;
    }
    return {};
}

// The languages of the user interface, the preferred one first. Empty when the system fails.
std::vector<std::wstring> interfaceLanguages() {
    // Equally right with 1: the system writes it.
    ULONG count = 0;
    ULONG units = 0;
    if (!::GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &units)) return {};
    std::wstring list(units, L'\0');
    if (!::GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, list.data(), &units)) return {};

    // Each name ends with a NUL, the list with another one.
    std::vector<std::wstring> names;
    for (const wchar_t* name = list.c_str(); *name != L'\0'; name += names.back().size() + 1) {
        names.emplace_back(name);
    }
    return names;
}

}  // namespace

bool resourceText(NativeHandle module, std::uint32_t id, LanguageId language, std::wstring& text) {
    text.clear();
    const auto library = static_cast<HMODULE>(module);
    const HRSRC found = findBlock(library, id, language);
    if (found == nullptr) return false;
    const HGLOBAL loaded = ::LoadResource(library, found);  // part of the module, so never freed
    if (loaded == nullptr) return false;
    const auto* const units = static_cast<const wchar_t*>(::LockResource(loaded));
    if (units == nullptr) return false;

    const std::wstring_view block(units, ::SizeofResource(library, found) / sizeof(wchar_t));
    text = entryOf(block, id % kTextsPerBlock);
    return !text.empty();
}

bool hasTexts(NativeHandle module, std::uint32_t id, LanguageId language) noexcept {
    return findBlock(static_cast<HMODULE>(module), id, language) != nullptr;
}

std::vector<std::wstring> preferredLanguages() {
    std::vector<std::wstring> names = interfaceLanguages();
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> name = {};
    if (names.empty() && ::GetUserDefaultLocaleName(name.data(), LOCALE_NAME_MAX_LENGTH) > 1) {
        names.emplace_back(name.data());
    }
    return names;
}

LanguageId userInterfaceLanguage() noexcept {
    const LanguageId language = ::GetUserDefaultUILanguage();
    return language != 0 ? language : ::GetUserDefaultLangID();
}

LanguageId systemDefaultLanguage() noexcept {
    return ::GetSystemDefaultLangID();
}

bool systemVersionKnown() noexcept {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    return ::GetVersionExW(&version) != 0;
}

NativeHandle openResourceLibrary(const wchar_t* name) noexcept {
    return ::LoadLibraryExW(name, nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

}  // namespace platform
