#include "platform/resource_text.h"

#include "platform/simulated/world.h"

namespace platform {

using simulated::Call;
using simulated::world;

bool resourceText(NativeHandle module, std::uint32_t id, LanguageId language, std::wstring& text) {
    text.clear();
    return !world().faults.strikes(Call::TextLookup) &&
           world().texts.text(module, id, language, text);
}

bool hasTexts(NativeHandle module, std::uint32_t id, LanguageId language) noexcept {
    return !world().faults.strikes(Call::TextProbe) && world().texts.hasBlock(module, id, language);
}

std::vector<std::wstring> preferredLanguages() {
    std::vector<std::wstring> names;
    if (!world().faults.strikes(Call::PreferredLanguages)) names = world().texts.preferred();
    if (names.empty()) names.push_back(world().texts.userLocale());
    if (names.back().empty()) names.clear();
    return names;
}

LanguageId userInterfaceLanguage() noexcept {
    const bool isUnknown = world().faults.strikes(Call::InterfaceLanguage);
    const LanguageId language = isUnknown ? LanguageId{0} : world().texts.userInterfaceLanguage();
    return language != 0 ? language : world().texts.userLanguage();
}

LanguageId systemDefaultLanguage() noexcept {
    return world().texts.systemLanguage();
}

bool systemVersionKnown() noexcept {
    return !world().faults.strikes(Call::SystemVersion);
}

NativeHandle openResourceLibrary(const wchar_t* name) noexcept {
    if (world().faults.strikes(Call::ResourceLibraryOpen)) return nullptr;
    return world().texts.find(name);
}

}  // namespace platform
