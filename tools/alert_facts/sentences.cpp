#include "tools/alert_facts/sentences.h"

#include <algorithm>
#include <cwchar>
#include <locale>

namespace alert_facts {

std::string utf8(const std::wstring& text) {
    const auto& convert =
        std::use_facet<std::codecvt<char32_t, char8_t, std::mbstate_t>>(std::locale::classic());
    const std::u32string points(text.begin(), text.end());
    std::u8string bytes(points.size() * static_cast<std::size_t>(convert.max_length()), 0);
    std::mbstate_t state{};
    const char32_t* read = nullptr;
    char8_t* end = nullptr;
    convert.out(state, points.data(), points.data() + points.size(), read, bytes.data(),
                bytes.data() + bytes.size(), end);
    return {bytes.data(), end};
}

std::string joined(const std::vector<std::string>& parts, const std::string& mark) {
    std::string text;
    for (const std::string& part : parts)
        text += text.empty() ? part : mark + part;
    return text;
}

std::string inOneLine(const std::string& text) {
    std::string line = text;
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

// Without the mark of its letter.
std::wstring captionOf(std::wstring caption) {
    std::erase(caption, L'&');
    return caption;
}

std::string hoursText(std::int64_t hours) {
    constexpr std::int64_t kDay = 24, kYear = kDay * 365;
    const auto counted = [](std::int64_t number, const char* unit) {
        return std::to_string(number) + " " + unit + (number == 1 ? "" : "s");
    };
    if (hours % kYear == 0) return counted(hours / kYear, "year");
    return hours % kDay == 0 ? counted(hours / kDay, "day") : counted(hours, "hour");
}

std::string sentence(const Effects& effects, const Effects& untouched, int helpId,
                     const TextsById& english) {
    std::vector<std::string> parts;
    for (const headless::Message& message : effects.messages) {
        const int id = idOf(message.text);
        parts.push_back(id == helpId
                            ? "shows the help"
                            : "says “" + utf8(english.at(static_cast<unsigned>(id))) + "”");
    }
    if (effects.opensShop) parts.emplace_back("opens the shop page with this printer's supplies");
    if (effects.startsCompanion) parts.emplace_back("starts the companion Orrery");
    if (effects.opensCheck) parts.emplace_back("opens the cartridge check");
    for (const std::wstring& address : effects.addresses)
        parts.push_back("opens " + utf8(address));
    for (const std::wstring& button : effects.printerButtons)
        parts.push_back("presses “" + utf8(button) + "” on the printer");
    if (effects.closes) parts.emplace_back("closes the alert");
    if (effects.rest != untouched.rest)
        parts.emplace_back("ends its rest, so that it may come again at once");
    if (effects.endsMonitor)
        parts.emplace_back("ends the document, and the monitor if no other alert is open");
    return joined(parts, ", ");
}

}  // namespace alert_facts
