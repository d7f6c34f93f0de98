#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::simulated {

// Reads a document once from front to back, judges whether it is well-formed, and picks the text of
// the first element whose ancestors end in the given names.
class XmlReader {
public:
    // `path` is "//a/b/c" (a c in a b in an a, anywhere) or "/a/b" (a b in the root element a). Any
    // other path selects nothing.
    XmlReader(std::string_view document, std::string_view path);

    // Nothing when the document is malformed or no element matches.
    [[nodiscard]] std::optional<std::wstring> read();

private:
    bool readProlog();
    bool readMarkup();
    bool readStartTag();
    bool readAttributes();
    bool readEndTag();
    bool readText();
    bool readReference(std::wstring& text);
    bool readUntil(std::string_view end, std::string_view* content = nullptr);
    std::string_view readName();
    bool skipBlanks();  // true when there was at least one

    void enter(std::string_view name);
    void leave();
    void keep(const std::wstring& text);
    [[nodiscard]] bool matches() const;
    [[nodiscard]] bool at(std::string_view text) const;

    std::string_view _rest;
    std::vector<std::string_view> _steps;
    bool _isFromRoot = false;
    std::vector<std::string_view> _open;  // names of the open elements, the root first
    bool _hasRoot = false;
    std::size_t _matchDepth = 0;  // the depth of the matching element while it is open, else 0
    std::optional<std::wstring> _found;
};

}  // namespace platform::simulated
