#pragma once

#include <cstdint>
#include <string_view>

// Records the results of a target for one input, value by value, in bytes that are equal on every
// system. The programs that replay inputs keep them; a fuzzer drops them to save time.
#if defined(BEAMLINE_REPLAY)
inline constexpr bool kKeepsNotes = true;
void note(std::string_view name, std::string_view bytes);
void note(std::string_view name, std::wstring_view units);
void note(std::string_view name, std::int64_t number);
#else
inline constexpr bool kKeepsNotes = false;
inline void note(std::string_view, std::string_view) {}
inline void note(std::string_view, std::wstring_view) {}
inline void note(std::string_view, std::int64_t) {}
#endif
