#include "ui/language_choice.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

using platform::LanguageId;

constexpr std::size_t kTablesPerLanguage = 3;
constexpr wchar_t kAnyRegion[] = L"*";

// One way to read a language, and the tables for it; unused places are 0. The second and third
// tables count only while a language is left out of the library.
struct Row {
    const wchar_t* language;
    const wchar_t* part;  // a script or a region of the name; empty fits every name
    std::array<LanguageId, kTablesPerLanguage> tables;
};

// The first row that fits a name counts, so scripts stand before regions and the rest stands last.
// Rows without a table keep readers of another script from a table that they cannot read.
// clang-format off
constexpr Row kRows[] = {
    {L"af",  L"",     {0x0436}},
    {L"ar",  L"",     {0x0401}},
    {L"az",  L"Arab", {}},
    {L"az",  L"",     {0x042C}},
    {L"be",  L"",     {0x0423}},
    {L"bg",  L"",     {0x0402}},
    {L"bn",  L"",     {0x0845}},
    {L"bs",  L"Cyrl", {0x281A, 0x141A}},
    {L"bs",  L"",     {0x141A, 0x041A, 0x241A}},
    {L"ca",  L"",     {0x0403}},
    {L"cs",  L"",     {0x0405}},
    {L"cy",  L"",     {0x0452}},
    {L"da",  L"",     {0x0406}},
    {L"de",  L"",     {0x0407}},
    {L"el",  L"",     {0x0408}},
    {L"en",  L"",     {0x0409}},
    {L"es",  L"",     {0x0C0A}},
    {L"et",  L"",     {0x0425}},
    {L"eu",  L"",     {0x042D}},
    {L"fi",  L"",     {0x040B}},
    {L"fil", L"",     {0x0464}},
    {L"fr",  L"",     {0x040C}},
    {L"ga",  L"",     {0x083C}},
    {L"gl",  L"",     {0x0456}},
    {L"gu",  L"",     {0x0447}},
    {L"he",  L"",     {0x040D}},
    {L"hi",  L"",     {0x0439}},
    {L"hr",  L"",     {0x041A, 0x141A, 0x241A}},
    {L"hu",  L"",     {0x040E}},
    {L"hy",  L"",     {0x042B}},
    {L"id",  L"",     {0x0421}},
    {L"in",  L"",     {0x0421}},
    {L"is",  L"",     {0x040F}},
    {L"it",  L"",     {0x0410}},
    {L"iw",  L"",     {0x040D}},
    {L"ja",  L"",     {0x0411}},
    {L"ka",  L"",     {0x0437}},
    {L"kk",  L"Arab", {}},
    {L"kk",  L"",     {0x043F}},
    {L"kn",  L"",     {0x044B}},
    {L"ko",  L"",     {0x0412}},
    {L"lt",  L"",     {0x0427}},
    {L"lv",  L"",     {0x0426}},
    {L"mk",  L"",     {0x042F}},
    {L"ml",  L"",     {0x044C}},
    {L"mr",  L"",     {0x044E}},
    {L"ms",  L"Arab", {}},
    {L"ms",  L"",     {0x043E, 0x0421}},
    {L"nb",  L"",     {0x0414, 0x0814}},
    {L"nl",  L"",     {0x0413}},
    {L"nn",  L"",     {0x0814, 0x0414}},
    {L"no",  L"",     {0x0414, 0x0814}},
    {L"pa",  L"Arab", {}},
    {L"pa",  L"PK",   {}},
    {L"pa",  L"",     {0x0446}},
    {L"pl",  L"",     {0x0415}},
    {L"pt",  L"BR",   {0x0416, 0x0816}},
    {L"pt",  L"*",    {0x0816, 0x0416}},
    {L"pt",  L"",     {0x0416, 0x0816}},
    {L"ro",  L"",     {0x0418}},
    {L"ru",  L"",     {0x0419}},
    {L"sk",  L"",     {0x041B}},
    {L"sl",  L"",     {0x0424}},
    {L"sq",  L"",     {0x041C}},
    {L"sr",  L"Latn", {0x241A, 0x281A}},
    {L"sr",  L"Cyrl", {0x281A, 0x241A}},
    {L"sr",  L"ME",   {0x241A, 0x281A}},
    {L"sr",  L"",     {0x281A, 0x241A}},
    {L"sv",  L"",     {0x041D}},
    {L"ta",  L"",     {0x0449}},
    {L"te",  L"",     {0x044A}},
    {L"th",  L"",     {0x041E}},
    {L"tl",  L"",     {0x0464}},
    {L"tr",  L"",     {0x041F}},
    {L"uk",  L"",     {0x0422}},
    {L"vi",  L"",     {0x042A}},
    {L"yue", L"Hans", {0x0804, 0x0404}},
    {L"yue", L"",     {0x0404, 0x0804}},
    {L"zh",  L"Hans", {0x0804, 0x0404}},
    {L"zh",  L"Hant", {0x0404, 0x0804}},
    {L"zh",  L"CHT",  {0x0404, 0x0804}},
    {L"zh",  L"HK",   {0x0404, 0x0804}},
    {L"zh",  L"MO",   {0x0404, 0x0804}},
    {L"zh",  L"TW",   {0x0404, 0x0804}},
    {L"zh",  L"",     {0x0804, 0x0404}},
};
// clang-format on

// The part of the name up to the next hyphen, taken off the name.
std::wstring_view takePart(std::wstring_view& name) noexcept {
    const std::size_t units = std::min(name.find(L'-'), name.size());
    const std::wstring_view part = name.substr(0, units);
    name.remove_prefix(std::min(units + 1, name.size()));
    return part;
}

bool hasPart(std::wstring_view rest, std::wstring_view part) noexcept {
    if (part.empty()) return true;
    if (part == kAnyRegion) return !rest.empty();
    while (!rest.empty()) {
        if (takePart(rest) == part) return true;
    }
    return false;
}

}  // namespace

std::span<const LanguageId> languagesFor(std::wstring_view name) noexcept {
    std::wstring_view rest = name;
    const std::wstring_view language = takePart(rest);
    for (const Row& row : kRows) {
        if (row.language != language || !hasPart(rest, row.part)) continue;
        return {row.tables.begin(), std::find(row.tables.begin(), row.tables.end(), 0)};
    }
    return {};
}
