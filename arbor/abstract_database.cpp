#include "arbor/abstract_database.h"

#include "arbor/null_property.h"
#include "arbor/scoped_lock.h"
#include "arbor/wide_key.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace arbor {

namespace {

// Does not use a CompoundKey: a vector made from a list of texts leaks in some standard libraries
// when the copy of one text finds no memory.
std::wstring flat(const wchar_t* key1, const wchar_t* key2) {
    std::wstring text;
    for (const wchar_t* component : {key1, key2}) {
        text += L'/';
        text += component;
    }
    return text;
}

IProperty* orNull(IProperty* property) {
    return property != nullptr ? property : &NullProperty::instance();
}

}  // namespace

std::wstring IDatabase::CompoundKey::toString() const {
    std::wstring text;
    for (const std::wstring& component : *this) {
        text += L'/';
        text += component;
    }
    return text;
}

bool AbstractDatabase::contains(const wchar_t* key1, const wchar_t* key2) {
    return contains(flat(key1, key2).c_str());
}

bool AbstractDatabase::contains(const wchar_t* flatKey) {
    const ScopedLock lock(*this);
    return _entries.contains(flatKey);
}

bool AbstractDatabase::contains(std::uint32_t id) {
    const ScopedLock lock(*this);
    return _entries.contains(static_cast<int>(id));
}

std::uint32_t AbstractDatabase::getId(const CompoundKey& key) {
    const std::wstring flatKey = key.toString();
    const ScopedLock lock(*this);
    return static_cast<std::uint32_t>(_entries.symbolOf(flatKey));
}

IProperty* AbstractDatabase::get(const wchar_t* key1, const wchar_t* key2) {
    return get(flat(key1, key2).c_str());
}

IProperty* AbstractDatabase::get(const wchar_t* flatKey) {
    const ScopedLock lock(*this);
    return orNull(_entries.get(flatKey, nullptr));
}

IProperty* AbstractDatabase::get(std::uint32_t id) {
    const ScopedLock lock(*this);
    return orNull(_entries.get(static_cast<int>(id), nullptr));
}

bool AbstractDatabase::set(const wchar_t* key1, const wchar_t* key2, IProperty* property,
                           DatabaseObserver* observer) {
    return set(flat(key1, key2).c_str(), property, observer);
}

// A try block of the whole function: its handler runs without the lock.
bool AbstractDatabase::set(const wchar_t* flatKey, IProperty* property,
                           DatabaseObserver* observer) try {
    if (!NullProperty::mayBeAdopted(property)) return false;
    std::unique_ptr<IProperty> replaced;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);

    Entries::Taken old;
    const int symbol = _entries.set(flatKey, property, old);
    if (old.found()) {
        replaced = replacedBy(property, old);
        return true;
    }
    if (symbol == Entries::kNoSymbol || observer == nullptr) return symbol != Entries::kNoSymbol;
    try {
        _observers[static_cast<std::uint32_t>(symbol)].push_back(observer);
    } catch (const std::bad_alloc&) {
        // An entry without its observer would be half of what the caller wanted: take it back.
        // Equally right after the next: nobody can look before both are gone.
        _observers.erase(static_cast<std::uint32_t>(symbol));
        _entries.take(symbol);
        return false;
    }
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool AbstractDatabase::set(std::uint32_t id, IProperty* property, DatabaseObserver*) {
    if (!NullProperty::mayBeAdopted(property)) return false;
    std::unique_ptr<IProperty> replaced;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);
    const Entries::Taken old = _entries.exchange(static_cast<int>(id), property);
    replaced = replacedBy(property, old);
    return old.found();
}

std::unique_ptr<IProperty> AbstractDatabase::replacedBy(const IProperty* property,
                                                        const Entries::Taken& old) {
    // The caller may hand in what get() gave for this very entry: then nothing is replaced.
    return std::unique_ptr<IProperty>(old.value != property ? old.value : nullptr);
}

bool AbstractDatabase::remove(const wchar_t* key1, const wchar_t* key2) {
    return remove(flat(key1, key2).c_str());
}

bool AbstractDatabase::remove(const wchar_t* flatKey) {
    std::unique_ptr<IProperty> removed;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);
    return forget(_entries.take(flatKey), removed);
}

bool AbstractDatabase::remove(std::uint32_t id) {
    std::unique_ptr<IProperty> removed;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);
    return forget(_entries.take(static_cast<int>(id)), removed);
}

bool AbstractDatabase::forget(const Entries::Taken& taken, std::unique_ptr<IProperty>& removed) {
    removed.reset(taken.value);
    if (taken.found()) _observers.erase(static_cast<std::uint32_t>(taken.symbol));
    return taken.found();
}

void AbstractDatabase::addObserver(DatabaseObserver* observer) {
    const ScopedLock lock(*this);
    _observers[kAllEntries].push_back(observer);
}

void AbstractDatabase::addObserver(DatabaseObserver* observer, const wchar_t* flatKey) {
    const ScopedLock lock(*this);
    const int symbol = _entries.symbolOf(flatKey);
    if (symbol != Entries::kNoSymbol) {
        _observers[static_cast<std::uint32_t>(symbol)].push_back(observer);
    }
}

void AbstractDatabase::removeObserver(DatabaseObserver* observer) {
    const ScopedLock lock(*this);
    for (auto& [id, list] : _observers) {
        const auto place = std::find(list.begin(), list.end(), observer);
        if (place != list.end()) list.erase(place);
    }
}

void AbstractDatabase::getGuid(Guid& guid, const wchar_t* className) {
    guid = Guid{};
    const IProperty* property = get(className, kGuidKey);
    if (property->isNull() || property->getSize() != sizeof(Guid)) return;
    const void* bytes = property->getData();
    if (bytes != nullptr) std::memcpy(&guid, bytes, sizeof(Guid));
}

void AbstractDatabase::getGuid(Guid& guid, const char* className) {
    getGuid(guid, WideKey(className).text());
}

}  // namespace arbor
