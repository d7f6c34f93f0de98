#pragma once

namespace platform {

// Restricts where libraries are looked for by name, from now on and for the whole process, to the
// program's own folder and the system's: a print job may start us in any folder and with any PATH,
// where somebody else may have left a library. Called once, before the first library is loaded.
void keepLibrarySearchToOwnAndSystemFolder() noexcept;

}  // namespace platform
