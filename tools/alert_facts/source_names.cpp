#include "tools/alert_facts/source_names.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace alert_facts {

namespace {

std::vector<std::string> linesOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    if (lines.empty()) throw std::runtime_error(file.string() + " cannot be read");
    return lines;
}

// "NonQvCartridge10403" is "non qv cartridge" with a blank as the mark between words.
std::string inWords(const std::string& name, char mark) {
    std::string words;
    for (const char letter : name.substr(0, name.find_last_not_of("0123456789") + 1)) {
        if (std::isupper(static_cast<unsigned char>(letter)) != 0 && !words.empty()) words += mark;
        words += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    return words;
}

// Calls `use` for each line of the file that is as `pattern` says.
template <typename Use>
void forEachMatch(const std::filesystem::path& file, const char* pattern, Use use) {
    const std::regex wanted(pattern);
    bool found = false;
    for (const std::string& line : linesOf(file)) {
        std::smatch parts;
        if (!std::regex_search(line, parts, wanted)) continue;
        use(parts);
        found = true;
    }
    if (!found) throw std::runtime_error(file.string() + " has no line like " + pattern);
}

}  // namespace

StatusNames readStatusNames(const std::filesystem::path& root) {
    StatusNames names;
    const std::string first = "First";
    bool isSubcode = false;
    forEachMatch(root / "printer/status_codes.h",
                 "namespace status_subcode|k([A-Za-z0-9]+) = ([0-9]+);",
                 [&](const std::smatch& parts) {
                     isSubcode = isSubcode || !parts[1].matched;
                     if (isSubcode) return;
                     const std::string name = parts[1];
                     const int code = std::stoi(parts[2]);
                     if (name.starts_with(first)) {
                         names.firstOfRange[code] = inWords(name.substr(first.size()), ' ');
                     } else if (!name.starts_with("Last")) {
                         names.codes[code] = inWords(name, ' ');
                     }
                 });
    return names;
}

std::map<int, std::string> readAlertNames(const std::filesystem::path& root) {
    std::map<int, std::string> names;
    forEachMatch(
        root / "printer/alert_types.h", "^ +([A-Za-z]+) = ([0-9]+),",
        [&](const std::smatch& parts) { names[std::stoi(parts[2])] = inWords(parts[1], '-'); });
    return names;
}

std::vector<Language> readLanguages(const std::filesystem::path& root) {
    std::vector<Language> languages;
    const std::string english = "en";
    forEachMatch(root / "strings/languages.tsv", "^([^#\t]+)\t([0-9A-F]{4})\t([^\t]+)\t([^\t]+)\t",
                 [&](const std::smatch& parts) {
                     const std::string code = parts[1];
                     const std::filesystem::path texts = root / "strings/po" / (code + ".po");
                     if (code != english && !std::filesystem::exists(texts)) return;
                     constexpr int kHexadecimal = 16;
                     const int number = std::stoi(parts[2], nullptr, kHexadecimal);
                     languages.push_back(
                         {code, static_cast<platform::LanguageId>(number), parts[3], parts[4]});
                 });
    return languages;
}

std::vector<Picture> readPictures(const std::filesystem::path& root) {
    std::vector<Picture> pictures;
    for (const char* const story : {"alerts", "other-printer", "cartridge-check", "languages"}) {
        const std::filesystem::path file =
            root / "scenarios/gallery" / (std::string(story) + ".txt");
        Picture now{};
        forEachMatch(file, "^(status|media|press|screenshot) ([^ ]+)",
                     [&](const std::smatch& parts) {
                         const std::string word = parts[1];
                         const std::string what = parts[2];
                         if (word == "status") {
                             now.status = std::stoi(what);
                             now.pagesDeep = 0;
                         } else if (word == "media") {
                             now.medium = what;
                         } else if (word == "screenshot") {
                             now.name = what;
                             pictures.push_back(now);
                         } else if (what == "message" || what == "check-learn-more") {
                             ++now.pagesDeep;
                         } else if (what == "details-done") {
                             --now.pagesDeep;
                         }
                     });
    }
    return pictures;
}

}  // namespace alert_facts
