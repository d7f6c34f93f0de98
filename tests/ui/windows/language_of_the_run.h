#pragma once

#include <cstdlib>

// Which language the run of a test program is for, as the number that Windows gives it. Without its
// texts, or in a locale that the system does not know, a language would be tested in English:
// programs that run once for each language therefore compare this with what the system chooses.
[[nodiscard]] inline unsigned long languageOfTheRun() {
    constexpr unsigned long kEnglish = 0x0409;
    const char* const number = std::getenv("BEAMLINE_LANGUAGE");
    return number != nullptr ? std::strtoul(number, nullptr, 16) : kEnglish;
}
