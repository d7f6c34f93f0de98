#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace printpath {

// Restores the registry values that a scenario changes, and removes the keys that had to be created
// for them. The destructor does it.
class RegistryRestorer {
public:
    RegistryRestorer() = default;
    ~RegistryRestorer();
    RegistryRestorer(const RegistryRestorer&) = delete;
    RegistryRestorer& operator=(const RegistryRestorer&) = delete;

    // Call it before each change of the value.
    void note(HKEY root, const std::wstring& key, const std::wstring& name);

private:
    struct Change {
        HKEY root;
        std::wstring key;
        std::wstring name;
        bool existed;
        DWORD type;
        std::vector<std::uint8_t> data;
        std::vector<std::wstring> missingKeys;  // the key and those above it, the deepest first
    };

    static void undo(const Change& change);

    std::vector<Change> _changes;
};

}  // namespace printpath
