#pragma once

#include "platform/registry.h"

#include <cstdint>
#include <optional>
#include <vector>

// What the registry holds for the monitor, set and read by tests through the platform seam; so the
// same test runs on the simulated registry and on the real one.
namespace stored {

using Bytes = std::vector<unsigned char>;

// Removes every value that these tests know from the user's key.
void clear();

void write(const wchar_t* name, platform::ValueType type, const Bytes& bytes);
void writeVersion(std::uint32_t version);
void writeRecord(const Bytes& bytes);
void writeCurrent(std::uint32_t serial);

bool exists(const wchar_t* name);
std::optional<Bytes> read(const wchar_t* name, platform::ValueType type);
std::optional<std::uint32_t> version();
std::optional<std::uint32_t> current();
Bytes record();  // empty when there is none

}  // namespace stored
