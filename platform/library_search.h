#pragma once

namespace platform {

// Restricts where libraries are looked for by name, from now on and for the whole process, to the
// program's own folder and the system's: a print job may start us in any folder and with any PATH,
// where somebody else may have left a library. Called once, before the first library is loaded.
// When the system refuses, that is traced, and the search stays as it was: a user without alerts
// would be no better off.
void keepLibrarySearchToOwnAndSystemFolder() noexcept;

}  // namespace platform
