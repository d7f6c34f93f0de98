#pragma once

#include "platform/registry.h"

#include <cstdint>
#include <optional>
#include <vector>

// Sets and reads the monitor's values in the registry through platform/, so that the same test runs
// with the simulated registry and with the real one.
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
Bytes record();  // empty when no record is stored

}  // namespace stored
