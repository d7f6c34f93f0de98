#include "platform/simulated/xml_reader.h"

#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <system_error>
#include <utility>

namespace platform::simulated {
namespace {

constexpr std::wstring_view kWideBlanks = L" \t\r\n";

// What a character may be part of. A table answers this with one look-up, because fuzzing spends
// much of its time in this reader.
constexpr unsigned kBlank = 1;
constexpr unsigned kStartsName = 2;
constexpr unsigned kContinuesName = 4;
constexpr unsigned kText = 8;

constexpr unsigned classesOf(unsigned byte) {
    constexpr unsigned kFirstBeyondAscii = 0x80;
    const bool isBlank = byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
    const bool startsName = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                            byte == '_' || byte == ':' || byte >= kFirstBeyondAscii;
    const bool isDigit = byte >= '0' && byte <= '9';
    const bool continuesName = startsName || isDigit || byte == '-' || byte == '.';
    return (isBlank ? kBlank : 0U) | (startsName ? kStartsName : 0U) |
           (continuesName ? kContinuesName : 0U) | (isBlank || byte >= ' ' ? kText : 0U);
}

// A plain array and not std::array: in checked builds the operator of std::array is a call.
struct ClassTable {
    unsigned char of[256];
};
constexpr ClassTable classTable() {
    ClassTable table{};
    for (unsigned byte = 0; byte < sizeof(table.of); ++byte)
        table.of[byte] = static_cast<unsigned char>(classesOf(byte));
    return table;
}
constexpr ClassTable kClasses = classTable();

bool is(unsigned wanted, char character) {
    return (kClasses.of[static_cast<unsigned char>(character)] & wanted) != 0;
}

bool isBlank(char character) {
    return is(kBlank, character);
}

bool startsName(char character) {
    return is(kStartsName, character);
}

bool continuesName(char character) {
    return is(kContinuesName, character);
}

// How many characters at the front are plain text. It ends before '<', before '&', before a ']'
// that is not the first character, and before a character that no document may contain.
std::size_t plainLength(std::string_view rest) {
    const char* const begin = rest.data();
    const char* const end = begin + rest.size();
    const char* at = begin;
    while (at != end && is(kText, *at) && *at != '<' && *at != '&' && (at == begin || *at != ']'))
        ++at;
    return static_cast<std::size_t>(at - begin);
}

std::size_t nameLength(std::string_view rest) {
    const char* const begin = rest.data();
    const char* const end = begin + rest.size();
    const char* at = begin;
    while (at != end && is(kContinuesName, *at))
        ++at;
    return static_cast<std::size_t>(at - begin);
}

std::wstring trimmed(const std::wstring& text) {
    const auto first = text.find_first_not_of(kWideBlanks);
    if (first == std::wstring::npos) return {};
    return text.substr(first, text.find_last_not_of(kWideBlanks) - first + 1);
}

std::vector<std::string_view> split(std::string_view path) {
    std::vector<std::string_view> steps;
    steps.reserve(static_cast<std::size_t>(std::count(path.begin(), path.end(), '/')) + 1);
    while (true) {
        const auto end = path.find('/');
        const std::string_view step = path.substr(0, end);
        const bool isName = !step.empty() && startsName(step.front()) &&
                            std::all_of(step.begin(), step.end(), continuesName);
        if (!isName) return {};
        steps.push_back(step);
        if (end == std::string_view::npos) return steps;
        path.remove_prefix(end + 1);
    }
}

// The character that a reference stands for. `reference` is the part between '&' and ';', such as
// "amp" or "#x41".
std::optional<wchar_t> characterOf(std::string_view reference) {
    constexpr std::pair<std::string_view, wchar_t> kNamed[] = {
        {"amp", L'&'}, {"lt", L'<'}, {"gt", L'>'}, {"quot", L'"'}, {"apos", L'\''}};
    for (const auto& [name, character] : kNamed) {
        if (reference == name) return character;
    }
    if (!reference.starts_with('#')) return std::nullopt;
    reference.remove_prefix(1);
    constexpr int kDecimal = 10;
    constexpr int kHexadecimal = 16;
    const bool isHexadecimal = reference.starts_with('x');
    if (isHexadecimal) reference.remove_prefix(1);
    std::uint16_t value = 0;  // greater numbers are refused: no page of the device uses them
    const char* const end = reference.data() + reference.size();
    const auto parsed =
        std::from_chars(reference.data(), end, value, isHexadecimal ? kHexadecimal : kDecimal);
    if (parsed.ec != std::errc() || parsed.ptr != end || value == 0) return std::nullopt;
    return static_cast<wchar_t>(value);
}

}  // namespace

XmlReader::XmlReader(std::string_view document, std::string_view path) : _rest(document) {
    constexpr std::string_view kAnywhere = "//";
    _isFromRoot = !path.starts_with(kAnywhere);
    if (!path.starts_with('/')) return;
    path.remove_prefix(_isFromRoot ? 1 : kAnywhere.size());
    _steps = split(path);
}

std::optional<std::wstring> XmlReader::read() {
    if (_steps.empty() || !readProlog()) return std::nullopt;
    constexpr std::size_t kUsualDepth = 8;
    _open.reserve(kUsualDepth);
    while (!_rest.empty()) {
        if (!(at("<") ? readMarkup() : readText())) return std::nullopt;
    }
    if (!_open.empty() || !_hasRoot || !_found) return std::nullopt;
    return trimmed(*_found);
}

bool XmlReader::readProlog() {
    constexpr std::string_view kDeclaration = "<?xml";
    const bool isDeclared = at(kDeclaration) && _rest.size() > kDeclaration.size() &&
                            isBlank(_rest[kDeclaration.size()]);
    return !isDeclared || readUntil("?>");
}

bool XmlReader::readMarkup() {
    constexpr std::string_view kCData = "<![CDATA[";
    // No markup is more frequent than start tags, so they are looked for first.
    if (_rest.size() > 1 && startsName(_rest[1])) return readStartTag();
    if (at("</")) return readEndTag();
    if (at("<!--")) {
        _rest.remove_prefix(std::string_view("<!--").size());
        return readUntil("-->");
    }
    if (at(kCData)) {
        _rest.remove_prefix(kCData.size());
        std::string_view content;
        if (_open.empty() || !readUntil("]]>", &content)) return false;
        if (_matchDepth != 0) keep(widened(content));
        return true;
    }
    return at("<?") && !at("<?xml ") && readUntil("?>");
}

bool XmlReader::readStartTag() {
    _rest.remove_prefix(1);
    const std::string_view name = readName();
    if ((_open.empty() && _hasRoot) || !readAttributes()) return false;
    enter(name);
    if (at("/>")) {
        leave();
        _rest.remove_prefix(2);
        return true;
    }
    if (!at(">")) return false;
    _rest.remove_prefix(1);
    return true;
}

bool XmlReader::readAttributes() {
    std::vector<std::string_view> seen;
    while (skipBlanks() && !_rest.empty() && startsName(_rest.front())) {
        const std::string_view name = readName();
        if (std::find(seen.begin(), seen.end(), name) != seen.end()) return false;
        seen.push_back(name);
        skipBlanks();
        if (!at("=")) return false;
        _rest.remove_prefix(1);
        skipBlanks();
        if (!at("\"") && !at("'")) return false;
        const std::string_view quote = _rest.substr(0, 1);
        _rest.remove_prefix(1);
        std::string_view value;
        if (!readUntil(quote, &value) || value.find('<') != std::string_view::npos) return false;
    }
    return true;
}

bool XmlReader::readEndTag() {
    _rest.remove_prefix(2);
    const std::string_view name = readName();
    skipBlanks();
    if (_open.empty() || _open.back() != name || !at(">")) return false;
    _rest.remove_prefix(1);
    leave();
    return true;
}

bool XmlReader::readText() {
    std::wstring text;
    while (!_rest.empty() && _rest.front() != '<') {
        if (_rest.front() == '&') {
            if (!readReference(text)) return false;
            continue;
        }
        if (at("]]>")) return false;
        const std::size_t length = plainLength(_rest);
        if (length == 0) return false;
        text += widened(_rest.substr(0, length));
        _rest.remove_prefix(length);
    }
    const bool isOnlyBlank = text.find_first_not_of(kWideBlanks) == std::wstring::npos;
    if (_open.empty()) return isOnlyBlank;
    if (!isOnlyBlank) keep(text);
    return true;
}

bool XmlReader::readReference(std::wstring& text) {
    _rest.remove_prefix(1);
    std::string_view reference;
    if (!readUntil(";", &reference)) return false;
    const auto character = characterOf(reference);
    if (!character) return false;
    text += *character;
    return true;
}

bool XmlReader::readUntil(std::string_view end, std::string_view* content) {
    const auto place = _rest.find(end);
    if (place == std::string_view::npos) return false;
    if (content != nullptr) *content = _rest.substr(0, place);
    _rest.remove_prefix(place + end.size());
    return true;
}

std::string_view XmlReader::readName() {
    if (_rest.empty() || !startsName(_rest.front())) return {};
    const std::string_view name = _rest.substr(0, nameLength(_rest));
    _rest.remove_prefix(name.size());
    return name;
}

bool XmlReader::skipBlanks() {
    const auto before = _rest.size();
    while (!_rest.empty() && isBlank(_rest.front()))
        _rest.remove_prefix(1);
    return _rest.size() != before;
}

void XmlReader::enter(std::string_view name) {
    _open.push_back(name);
    _hasRoot = true;
    if (_found || !matches()) return;
    _found.emplace();
    _matchDepth = _open.size();
}

void XmlReader::leave() {
    if (_open.size() == _matchDepth) _matchDepth = 0;
    _open.pop_back();
}

void XmlReader::keep(const std::wstring& text) {
    if (_matchDepth != 0) *_found += text;
}

// Compares letter by letter because most comparisons end at one of the first two letters. The
// library's comparison is slower under a fuzzer, which records each of its calls.
bool XmlReader::at(std::string_view text) const {
    if (_rest.size() < text.size()) return false;
    const char* left = _rest.data();
    const char* const end = left + text.size();
    for (const char* right = text.data(); left != end; ++left, ++right) {
        if (*left != *right) return false;
    }
    return true;
}

bool XmlReader::matches() const {
    if (_open.size() < _steps.size() || (_isFromRoot && _open.size() != _steps.size())) {
        return false;
    }
    return std::equal(_steps.rbegin(), _steps.rend(), _open.rbegin());
}

}  // namespace platform::simulated
