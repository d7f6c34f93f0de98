#pragma once

namespace printpath {

// Whether this is Wine, where a prefix of one's own may be changed at will.
bool underWine();

}  // namespace printpath
