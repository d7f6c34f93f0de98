#pragma once

#include <filesystem>
#include <string>

namespace printpath {

// Whether `file`, the simulated spooler, stands as winspool.drv in the system folder of this Wine
// prefix. Placing it there is the runner's work: the folder may hold links into a prefix that
// others share, and a Windows program would write through them.
bool isPlacedInSystemFolder(const std::filesystem::path& file);

// While it lives, Wine loads the winspool.drv of the system folder into programs of this file name
// instead of its own one. All other programs, this one included, keep Wine's spooler.
class SpoolerOverride {
public:
    explicit SpoolerOverride(const std::wstring& programName);  // throws Failure
    ~SpoolerOverride();
    SpoolerOverride(const SpoolerOverride&) = delete;
    SpoolerOverride& operator=(const SpoolerOverride&) = delete;

private:
    std::wstring _key;
};

}  // namespace printpath
