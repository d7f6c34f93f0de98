#pragma once

#include <cstdint>

// Status codes that the decision knows by name; the table of status_dispatch.cpp has all the
// others.
inline constexpr std::int32_t kTonerOutBlack = 10300;
inline constexpr std::int32_t kFirstErrorStatus =
    10403;  // from here on, switched off with the errors

// Subcodes of a status record that say more than a status.
inline constexpr std::int32_t kNewCartridgeSubcode = 1;
inline constexpr std::int32_t kCancelSubcode = 19;

// Types of the alerts that a rule names; the others stand in the tables.
inline constexpr std::uint32_t kMediaAlert = 1;
inline constexpr std::uint32_t kTonerLowAlert = 4;
inline constexpr std::uint32_t kWelcomeAlert = 25;
inline constexpr std::uint32_t kFaxAlert = 26;
inline constexpr std::uint32_t kFaxLinkAlert = 27;
inline constexpr std::uint32_t kTonerVeryLowAlert = 30;
inline constexpr std::uint32_t kTonerOutAlert = 31;
