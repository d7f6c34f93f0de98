#include "tools/printpath/windows/registry_restorer.h"

#include "tools/printpath/windows/handle.h"

namespace printpath {

namespace {

RegistryKey open(HKEY root, const std::wstring& key, REGSAM access) {
    HKEY opened = nullptr;
    if (::RegOpenKeyExW(root, key.c_str(), 0, access, &opened) != ERROR_SUCCESS) return {};
    return RegistryKey(opened);
}

std::vector<std::wstring> missingKeys(HKEY root, std::wstring key) {
    std::vector<std::wstring> missing;
    while (!key.empty() && !open(root, key, KEY_READ)) {
        missing.push_back(key);
        const std::size_t end = key.rfind(L'\\');
        key.resize(end == std::wstring::npos ? 0 : end);
    }
    return missing;
}

// A key that is not empty was filled by somebody else in the meantime. It must stay, because its
// values would be removed with it.
bool isEmpty(HKEY root, const std::wstring& key) {
    const RegistryKey opened = open(root, key, KEY_READ);
    DWORD keys = 0;
    DWORD values = 0;
    return opened &&
           ::RegQueryInfoKeyW(opened.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                              &values, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS &&
           keys == 0 && values == 0;
}

}  // namespace

RegistryRestorer::~RegistryRestorer() {
    // Undo the changes from the last to the first: the first one has the original value.
    for (auto change = _changes.rbegin(); change != _changes.rend(); ++change)
        undo(*change);
}

void RegistryRestorer::note(HKEY root, const std::wstring& key, const std::wstring& name) {
    Change change{root, key, name, false, REG_NONE, {}, missingKeys(root, key)};
    const RegistryKey opened = open(root, key, KEY_QUERY_VALUE);
    DWORD bytes = 0;
    if (opened && ::RegQueryValueExW(opened.get(), name.c_str(), nullptr, &change.type, nullptr,
                                     &bytes) == ERROR_SUCCESS) {
        change.data.resize(bytes);
        change.existed = ::RegQueryValueExW(opened.get(), name.c_str(), nullptr, &change.type,
                                            change.data.data(), &bytes) == ERROR_SUCCESS;
    }
    _changes.push_back(std::move(change));
}

void RegistryRestorer::undo(const Change& change) {
    if (const RegistryKey opened = open(change.root, change.key, KEY_SET_VALUE)) {
        if (change.existed)
            ::RegSetValueExW(opened.get(), change.name.c_str(), 0, change.type, change.data.data(),
                             static_cast<DWORD>(change.data.size()));
        else
            ::RegDeleteValueW(opened.get(), change.name.c_str());
    }
    for (const std::wstring& key : change.missingKeys)
        if (isEmpty(change.root, key)) ::RegDeleteKeyW(change.root, key.c_str());
}

}  // namespace printpath
