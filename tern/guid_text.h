#pragma once

#include "arbor/guid.h"

#include <string>

namespace tern {

// The key form of a GUID: lower-case hexadecimal without leading zeros, the last eight bytes run
// together without a dash. This is not the canonical form of a GUID, and it cannot be read back. It
// need not be: the same function writes the keys and the lookups. Any thread; nothing
// fails but memory (std::bad_alloc).
[[nodiscard]] std::wstring guidText(const arbor::Guid& guid);

}  // namespace tern
