#pragma once

#include "platform/resource_text.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

// Names that only the sources have: the compiler drops those of constants, and the stories of the
// gallery are read by the player. All of these throw std::runtime_error for a file that they cannot
// read or in which they find nothing.
namespace alert_facts {

// The constants of printer/status_codes.h by their codes, in words: 10209 is "toner low".
struct StatusNames {
    std::map<std::int32_t, std::string> codes;
    std::map<std::int32_t, std::string> firstOfRange;
};
[[nodiscard]] StatusNames readStatusNames(const std::filesystem::path& root);

// The enumerators of AlertType by their numbers, as parts of an address: 4 is "toner-low".
[[nodiscard]] std::map<int, std::string> readAlertNames(const std::filesystem::path& root);

// A row of strings/languages.tsv whose texts are in strings/po.
struct Language {
    std::string code;  // the name of its file and of its folder in the gallery
    platform::LanguageId number;
    std::string english;
    std::string own;
};
[[nodiscard]] std::vector<Language> readLanguages(const std::filesystem::path& root);

// A picture that a story of the gallery takes, and what is on the screen then.
struct Picture {
    std::string name;  // its file without the extension
    std::int32_t status;
    std::string medium;  // in the tray, empty until the story names one
    int pagesDeep;       // 0: the alert; 1: the cartridge check; 2: the details of the check
};
[[nodiscard]] std::vector<Picture> readPictures(const std::filesystem::path& root);

}  // namespace alert_facts
