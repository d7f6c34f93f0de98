#include "platform/library_search.h"

namespace platform {

void dropCurrentDirectoryFromLibrarySearch() noexcept {}  // the one library here has no place

}  // namespace platform
