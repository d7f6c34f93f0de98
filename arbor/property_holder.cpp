#include "arbor/property_holder.h"

#include "arbor/null_property.h"
#include "arbor/property.h"
#include "arbor/scoped_lock.h"

#include <cstring>
#include <cwchar>
#include <memory>
#include <new>

namespace arbor {

namespace {

// What the getters make of an entry; null: the key is absent.
std::int32_t intOf(const IProperty* property, std::int32_t defaultValue) {
    return property == nullptr || property->isNull() ? defaultValue : property->toInt();
}
void* pointerOf(const IProperty* property, void* defaultValue) {
    return property != nullptr && property->getType() == PT_OPAQUE ? property->getData()
                                                                   : defaultValue;
}
std::string textOf(const IProperty* property, const char* defaultValue) {
    if (property == nullptr || property->isNull()) return defaultValue;
    return property->toString();
}

}  // namespace

PropertyHolder::~PropertyHolder() {
    // The entries are not emptied first: nobody may use a bag that is being destroyed.
    const ScopedLock lock(*this);
    _entries.forEachValue([](IProperty* property) { delete property; });
}

IProperty* PropertyHolder::getProperty(const wchar_t* key) const {
    IProperty* property = find(key);
    return property != nullptr ? property : &NullProperty::instance();
}

bool PropertyHolder::hasProperty(const wchar_t* key) const {
    return _entries.contains(key);
}

bool PropertyHolder::setPointer(const wchar_t* key, void* pointer) {
    return setPointer(Key::of(key), pointer);
}

bool PropertyHolder::setInt(const wchar_t* key, std::int32_t value) {
    return setInt(Key::of(key), value);
}

bool PropertyHolder::setOpaque(const wchar_t* key, const void* data, std::uint64_t bytes) {
    return store(Key::of(key), Owned(Property::createOpaque(data, bytes)));
}

bool PropertyHolder::setWString(const wchar_t* key, const wchar_t* text) {
    return setWString(Key::of(key), text);
}

bool PropertyHolder::setString(const wchar_t* key, const char* text) {
    return setString(Key::of(key), text);
}

bool PropertyHolder::setPointer(Key key, void* pointer) {
    Owned property, replaced;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);
    property.reset(_slots.makePointer(pointer));
    return put(key, property, replaced);
}

bool PropertyHolder::setInt(Key key, std::int32_t value) {
    Owned property, replaced;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);
    property.reset(_slots.makeInt(value));
    return put(key, property, replaced);
}

bool PropertyHolder::setWString(Key key, const wchar_t* text) {
    return store(key, Owned(Property::createWString(text, std::wcslen(text))));
}

bool PropertyHolder::setString(Key key, const char* text) {
    return store(key, Owned(Property::createString(text, std::strlen(text))));
}

bool PropertyHolder::store(Key key, Owned property) {
    Owned replaced;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);
    return put(key, property, replaced);
}

bool PropertyHolder::adoptProperty(const wchar_t* key, IProperty* property) {
    return adoptProperty(Key::of(key), property);
}
bool PropertyHolder::adoptProperty(Key key, IProperty* property) {
    if (!NullProperty::mayBeAdopted(property)) return false;
    Owned given(property);
    Owned replaced;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);
    const bool stored = put(key, given, replaced);
    static_cast<void>(given.release());  // null, or still the caller's
    return stored;
}

bool PropertyHolder::put(Key key, Owned& property, Owned& replaced) noexcept try {
    if (property == nullptr) return false;
    // Replacing needs no memory, so a failed allocation never costs the old value.
    Entries::Taken old;
    const KeyLife life = key.isConstant() ? KeyLife::OfTheProgram : KeyLife::OfTheCall;
    const int symbol = _entries.replace(key.view(), property.get(), old, life);
    // The caller may hand in what getProperty() gave for this very key: then nothing is replaced.
    if (old.value != property.get()) replaced.reset(old.value);
    if (symbol == Entries::kNoSymbol) return false;
    static_cast<void>(property.release());
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

// A try block of the whole function: its handler runs without the lock.
bool PropertyHolder::setProperty(const wchar_t* key, const IProperty* property) try {
    if (property == nullptr) return false;
    Owned copy(Property::clone(*property));
    if (copy == nullptr) return false;
    Owned replaced;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);

    Entries::Taken old;
    const int symbol = _entries.set(key, copy.get(), old);
    // Equally right with true: a bag with two thousand million entries does not exist.
    if (symbol == Entries::kNoSymbol) return false;
    static_cast<void>(copy.release());
    replaced.reset(old.value);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool PropertyHolder::removeProperty(const wchar_t* key) {
    return removed(key);
}
bool PropertyHolder::removeProperty(Key key) {
    return removed(key.view());
}

template <typename AnyKey>
bool PropertyHolder::removed(AnyKey key) {
    Owned property;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);
    const Entries::Taken taken = _entries.take(key);
    property.reset(taken.value);
    return taken.found();
}

std::int32_t PropertyHolder::getInt(const wchar_t* key, std::int32_t defaultValue) const {
    return intOf(find(key), defaultValue);
}
std::int32_t PropertyHolder::getInt(Key key, std::int32_t defaultValue) const {
    return intOf(find(key), defaultValue);
}

void* PropertyHolder::getOpaque(const wchar_t* key, std::uint64_t* bytes,
                                void* defaultValue) const {
    const IProperty* property = find(key);
    if (property == nullptr) return defaultValue;
    if (property->isOpaque()) *bytes = property->getSize();
    return pointerOf(property, defaultValue);
}

void* PropertyHolder::getPointer(const wchar_t* key, void* defaultValue) const {
    std::uint64_t unused = 0;  // Equally right with 1: nobody reads the size.
    return getOpaque(key, &unused, defaultValue);
}
void* PropertyHolder::getPointer(Key key, void* defaultValue) const {
    return pointerOf(find(key), defaultValue);
}

std::string PropertyHolder::getString(const wchar_t* key, const char* defaultValue) const {
    return textOf(find(key), defaultValue);
}
std::string PropertyHolder::getString(Key key, const char* defaultValue) const {
    return textOf(find(key), defaultValue);
}

}  // namespace arbor
