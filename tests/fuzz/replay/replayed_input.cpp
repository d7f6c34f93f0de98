#include "tests/fuzz/replay/replayed_input.h"

#include "platform/simulated/world.h"
#include "tern/channel_settings.h"
#include "tests/fuzz/result_notes.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace {

std::string* keptNotes = nullptr;  // the notes of the input that is being replayed

void keep(std::string_view text) {
    keptNotes->append(text);
}

void keepEscaped(std::uint32_t unit, int digits) {
    constexpr std::uint32_t kFirstPlain = 0x20;
    constexpr std::uint32_t kLastPlain = 0x7E;
    if (unit >= kFirstPlain && unit <= kLastPlain && unit != '\\') {
        *keptNotes += static_cast<char>(unit);
        return;
    }
    char text[12];
    std::snprintf(text, sizeof text, "\\%c%0*x", digits == 2 ? 'x' : 'u', digits,
                  static_cast<unsigned>(unit));
    keep(text);
}

std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The hash FNV-1a, because it is short and its result is the same on every system.
std::uint64_t numberOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char letter : text) {
        hash ^= static_cast<unsigned char>(letter);
        hash *= 0x100000001B3U;
    }
    return hash;
}

}  // namespace

void note(std::string_view name, std::string_view bytes) {
    keep(name);
    keep("=");
    for (const char byte : bytes) {
        keepEscaped(static_cast<unsigned char>(byte), 2);
    }
    keep("\n");
}

void note(std::string_view name, std::wstring_view units) {
    keep(name);
    keep("=");
    // A wchar_t of 32 bits is cut to 16 bits, so that the notes are the same on every system. No
    // text here has a character that needs more.
    for (const wchar_t unit : units) {
        keepEscaped(static_cast<std::uint16_t>(unit), 4);
    }
    keep("\n");
}

void note(std::string_view name, std::int64_t number) {
    keep(name);
    keep("=" + std::to_string(number) + "\n");
}

ReplayedInput::ReplayedInput(const ReplayTarget& target, const std::string& file)
    : name(std::filesystem::path(file).filename().string()) {
    const std::string content = contentOf(file);
    platform::simulated::world().reset();
    tern::channelSettings() = {};
    keptNotes = &notes;
    target.run(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    keptNotes = nullptr;
}

std::string ReplayedInput::line() const {
    constexpr std::size_t kShownLetters = 60;
    char number[20];
    std::snprintf(number, sizeof number, "%016llx",
                  static_cast<unsigned long long>(numberOf(notes)));
    std::string beginning = notes.substr(0, kShownLetters);
    for (char& letter : beginning) {
        if (letter == '\n') letter = ' ';
    }
    while (!beginning.empty() && beginning.back() == ' ')
        beginning.pop_back();
    return name + " " + number + " " + beginning;
}
