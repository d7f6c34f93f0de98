#pragma once

#include <string>
#include <string_view>

namespace platform {

// Text of the one node that `path` selects in the document, in the ANSI code page. Prefixes are
// matched letter by letter against the element names; no namespace table is declared. False, with
// `out` empty, when the document does not load, has a document type definition, no node matches or
// the system's XML service is missing. Throws std::bad_alloc only. Any thread may call.
[[nodiscard]] bool queryXml(std::string_view document, const char* path, std::string& out);

}  // namespace platform
