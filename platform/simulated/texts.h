#pragma once

#include "platform/native_handle.h"
#include "platform/resource_text.h"
#include "platform/simulated/case_insensitive.h"
#include "platform/simulated/spin_lock.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::simulated {

inline constexpr LanguageId kEnglish = 0x0409;

// The string tables of modules, and the languages of the system. Any thread may call.
class Texts {
public:
    // Makes a module that openResourceLibrary() finds by this name. A name that is known already
    // gets the handle that it has.
    NativeHandle addModule(std::wstring_view name);
    void add(NativeHandle module, LanguageId language, std::uint32_t id, std::wstring_view text);

    // The names of the user's languages, the preferred one first.
    void setPreferredLanguages(std::vector<std::wstring> names);
    // The name of the user's language for dates and numbers. It is used if no language is
    // preferred.
    void setUserLocale(std::wstring name);
    void setUserInterfaceLanguage(LanguageId language);
    // The user's language for dates and numbers. It is used if there is no interface language.
    void setUserLanguage(LanguageId language);
    void setSystemLanguage(LanguageId language);
    void reset();

    // For the simulated services.
    [[nodiscard]] NativeHandle find(std::wstring_view name) const noexcept;
    [[nodiscard]] bool text(NativeHandle module, std::uint32_t id, LanguageId language,
                            std::wstring& out) const;
    [[nodiscard]] bool hasBlock(NativeHandle module, std::uint32_t id,
                                LanguageId language) const noexcept;
    [[nodiscard]] std::vector<std::wstring> preferred() const;
    [[nodiscard]] std::wstring userLocale() const;
    [[nodiscard]] LanguageId userInterfaceLanguage() const noexcept;
    [[nodiscard]] LanguageId userLanguage() const noexcept;
    [[nodiscard]] LanguageId systemLanguage() const noexcept;

private:
    struct Module {
        std::wstring name;
        std::map<std::pair<LanguageId, std::uint32_t>, std::wstring> texts;
    };
    struct State {
        std::vector<Module> modules;  // the handle of a module is made of its position here
        std::vector<std::wstring> preferred = {L"en-US"};
        std::wstring userLocale = L"en-US";
        LanguageId userInterface = kEnglish;
        LanguageId user = kEnglish;
        LanguageId system = kEnglish;
    };

    [[nodiscard]] const Module* moduleOf(NativeHandle module) const noexcept;

    mutable SpinLock _lock;
    State _state;
};

}  // namespace platform::simulated
