#include "platform/trace_path.h"

namespace platform {

std::wstring tracePath(std::wstring_view pattern, std::uint32_t processId,
                       EnvironmentLookup lookup) {
    constexpr wchar_t kMark = L'%';
    constexpr wchar_t kProcess = L'p';

    std::wstring path;
    for (std::size_t at = 0; at < pattern.size();) {
        if (pattern[at] != kMark) {
            path += pattern[at++];
            continue;
        }
        const std::size_t end = pattern.find(kMark, at + 1);
        std::wstring value;
        // A variable comes first: %programdata% begins with %p as well.
        if (end != std::wstring_view::npos &&
            lookup(std::wstring(pattern.substr(at + 1, end - at - 1)), value)) {
            path += value;
            at = end + 1;
        } else if (at + 1 < pattern.size() && pattern[at + 1] == kProcess) {
            // Not std::to_wstring, which brings the library's wide printf, 8 KiB of the program.
            const std::string number = std::to_string(processId);
            path.append(number.begin(), number.end());
            at += 2;
        } else {
            path += pattern[at++];
        }
    }
    return path;
}

}  // namespace platform
