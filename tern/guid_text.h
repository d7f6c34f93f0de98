#pragma once

#include "arbor/guid.h"

#include <string>

namespace tern {

// The key form of a GUID: lower-case hexadecimal without leading zeros, the last eight bytes run
// together without a dash. Not the canonical form, and not reversible; keys and lookups both use
// it.
[[nodiscard]] std::wstring guidText(const arbor::Guid& guid);

}  // namespace tern
