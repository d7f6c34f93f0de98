#pragma once

#include <cstdint>
#include <string_view>

namespace bench {

// A number that depends on the length and the end of a text: equal sums show that both sides have
// read it.
inline std::uint64_t of(std::string_view text) noexcept {
    return text.size() + static_cast<unsigned char>(text.empty() ? '\0' : text.back());
}
inline std::uint64_t of(std::wstring_view text) noexcept {
    return text.size() + static_cast<std::uint64_t>(text.empty() ? L'\0' : text.back());
}
inline std::uint64_t of(std::int32_t number) noexcept {
    return static_cast<std::uint32_t>(number);
}

}  // namespace bench
