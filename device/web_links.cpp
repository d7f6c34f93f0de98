#include "device/web_links.h"

#include "platform/machine_settings.h"
#include "platform/native_handle.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "platform/utf16.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

namespace {

// The names of the values are kept: see decision 0012.
constexpr std::size_t kSettingUnits = 512;  // longer addresses are not taken

struct Site {
    const wchar_t* setting;  // value of the configuration key
    const wchar_t* fallback;
};
constexpr Site kMakerSite{L"WebSite", L"https://www.corvane.example"};
constexpr Site kValidationSite{L"ValidationSite", L"https://validate.corvane.example"};

bool startsWith(std::wstring_view text, std::wstring_view lowerCasePrefix) {
    // Equally right with <=: a scheme without a host is refused anyway.
    if (text.size() < lowerCasePrefix.size()) return false;
    for (std::size_t i = 0; i < lowerCasePrefix.size(); ++i) {
        const wchar_t letter = text[i];
        // Equally right with > or with <: no scheme contains an A or a Z.
        const bool upper = letter >= L'A' && letter <= L'Z';
        if ((upper ? letter - L'A' + L'a' : letter) != lowerCasePrefix[i]) return false;
    }
    return true;
}

// The shell would open anything, programs included: only a web address with a host gets there, and
// nothing in it that could end the argument of the browser's command line.
bool isWebAddress(std::wstring_view address) {
    for (const std::wstring_view scheme : {L"https://", L"http://"}) {
        if (!startsWith(address, scheme)) continue;
        const std::wstring_view rest = address.substr(scheme.size());
        for (const wchar_t letter : rest) {
            if (letter <= L' ' || letter == L'"' || letter == L'\\') return false;
        }
        return !rest.empty() && rest.front() != L'/' && rest.front() != L'?' &&
               rest.front() != L'#';
    }
    return false;
}

enum class Setting { Absent, Unusable, Present };

Setting readSetting(const wchar_t* name, std::wstring& text) {
    platform::RegistryKey key;
    if (key.openForReading(platform::Hive::LocalMachine, platform::kMachineSettings) !=
        platform::kSuccess) {
        return Setting::Absent;
    }
    std::array<char16_t, kSettingUnits> units{};
    auto bytes = static_cast<std::uint32_t>(sizeof units);
    platform::ValueType type = platform::ValueType::None;
    const std::uint32_t error = key.read(name, type, units.data(), bytes);
    // The setting is there, but longer than any address that is taken.
    if (error == platform::kMoreData) return Setting::Unusable;
    if (error != platform::kSuccess) return Setting::Absent;
    if (type != platform::ValueType::String) return Setting::Unusable;

    std::u16string_view value(units.data(), bytes / sizeof(char16_t));
    text = platform::fromUtf16(value.substr(0, value.find(u'\0')));
    return isWebAddress(text) ? Setting::Present : Setting::Unusable;
}

std::wstring siteAddress(const Site& site) {
    std::wstring address;
    const Setting setting = readSetting(site.setting, address);
    if (setting == Setting::Present) {
        while (address.back() == L'/')
            address.pop_back();
        return address;
    }
    if (setting == Setting::Unusable) {
        platform::trace("TERNA - setting %s is no http address, using the default",
                        platform::narrowed(site.setting).c_str());
    }
    return site.fallback;
}

// A try block of the whole function: a link that opens nothing can be clicked again.
void openMakerPage(const wchar_t* path) try {
    platform::openAddress((makerSite() + path).c_str());
} catch (const std::bad_alloc&) {
    platform::trace("TERNA - no memory to open a link");
}

}  // namespace

std::wstring makerSite() {
    return siteAddress(kMakerSite);
}

std::wstring validationSite() {
    return siteAddress(kValidationSite);
}

void openAnticounterfeitPage() {
    openMakerPage(L"/go/anticounterfeit");
}

void openRecyclePage() {
    openMakerPage(L"/go/recycle");
}

void openPrivacyPage() {
    openMakerPage(L"/go/privacy");
}
