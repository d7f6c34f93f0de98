#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tern {

// The part of the command line that is about the status channel. Written once during start-up, on
// the main thread, before the generator that reads it is started; so it needs no lock.
struct ChannelSettings {
    static constexpr std::size_t kPipeNameUnits = 256;  // terminator included

    std::array<wchar_t, kPipeNameUnits> inputPipe{};
    std::int32_t printerId = 0;
};

// The settings of this process.
[[nodiscard]] ChannelSettings& channelSettings() noexcept;

}  // namespace tern
