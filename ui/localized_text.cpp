#include "ui/localized_text.h"

#include "strings/string_ids.h"
#include "ui/language_choice.h"

#include <algorithm>
#include <array>

namespace {

constexpr platform::LanguageId kEnglish = 1033;
constexpr std::uint32_t kHighestId = 0xFFFF;  // of a resource
constexpr std::size_t kBuffers = 4;

// Any text tells whether a language is there: the build checks that each has them all.
bool speaks(platform::NativeHandle module, platform::LanguageId language) {
    return platform::hasTexts(module, IDS_TITLE, language);
}

}  // namespace

platform::LanguageId chosenLanguage(platform::NativeHandle module) {
    for (const std::wstring& name : platform::preferredLanguages()) {
        for (const platform::LanguageId language : languagesFor(name)) {
            if (speaks(module, language)) return language;
        }
    }
    return kEnglish;
}

const wchar_t* loadText(platform::NativeHandle module, std::uint32_t id) {
    static std::array<std::array<wchar_t, kTextUnits>, kBuffers> buffers;
    static std::size_t index = 0;  // Equally right with 1: the first buffer may be any.
    // Equally right with -: backwards they are used in turn as well.
    index = (index + 1) % kBuffers;
    const std::wstring text = localizedText(module, id);
    *std::copy(text.begin(), text.end(), buffers[index].begin()) = L'\0';
    return buffers[index].data();
}

std::wstring localizedText(platform::NativeHandle module, std::uint32_t id, std::size_t units) {
    std::wstring text;
    if (id == 0 || id > kHighestId || units == 0) return text;
    if (!platform::resourceText(module, id, chosenLanguage(module), text)) return {};
    if (text.size() >= units) text.resize(units - 1);
    return text;
}

bool isRightToLeftUI() {
    constexpr platform::LanguageId kArabic = 0x01, kHebrew = 0x0D, kLowByte = 0xFF;
    if (!platform::systemVersionKnown()) return false;
    const auto primary =
        static_cast<platform::LanguageId>(platform::userInterfaceLanguage() & kLowByte);
    return primary == kArabic || primary == kHebrew;
}
