#pragma once

namespace platform {

// Takes the current directory out of the places where libraries are looked for by name: a print job
// may start us in any folder. Called once, before the first library is loaded.
void dropCurrentDirectoryFromLibrarySearch() noexcept;

}  // namespace platform
