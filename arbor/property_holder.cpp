#include "arbor/property_holder.h"

#include "arbor/null_property.h"
#include "arbor/property.h"
#include "arbor/scoped_lock.h"

#include <cstring>
#include <cwchar>
#include <memory>
#include <new>

namespace arbor {

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
    return store(key, _slots.makePointer(pointer));
}

bool PropertyHolder::setInt(const wchar_t* key, std::int32_t value) {
    return store(key, _slots.makeInt(value));
}

bool PropertyHolder::setOpaque(const wchar_t* key, const void* data, std::uint64_t bytes) {
    return store(key, Property::createOpaque(data, bytes));
}

bool PropertyHolder::setWString(const wchar_t* key, const wchar_t* text) {
    return store(key, Property::createWString(text, std::wcslen(text)));
}

bool PropertyHolder::setString(const wchar_t* key, const char* text) {
    return store(key, Property::createString(text, std::strlen(text)));
}

bool PropertyHolder::store(const wchar_t* key, IProperty* property) {
    if (PropertyHolder::adoptProperty(key, property)) return true;
    delete property;
    return false;
}

// A try block of the whole function, here and below: its handler runs without the lock.
bool PropertyHolder::adoptProperty(const wchar_t* key, IProperty* property) try {
    if (!NullProperty::mayBeAdopted(property)) return false;
    std::unique_ptr<IProperty> replaced;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);

    // Replacing needs no memory, so a failed allocation never costs the old value.
    Entries::Taken old;
    const int symbol = _entries.replace(key, property, old);
    // The caller may hand in what getProperty() gave for this very key: then nothing is replaced.
    if (old.value != property) replaced.reset(old.value);
    return symbol != Entries::kNoSymbol;
} catch (const std::bad_alloc&) {
    return false;
}

bool PropertyHolder::setProperty(const wchar_t* key, const IProperty* property) try {
    if (property == nullptr) return false;
    std::unique_ptr<IProperty> copy(Property::clone(*property));
    if (copy == nullptr) return false;
    std::unique_ptr<IProperty> replaced;  // declared before the lock: destroyed after it
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
    std::unique_ptr<IProperty> removed;  // declared before the lock: destroyed after it
    const ScopedLock lock(*this);
    const Entries::Taken taken = _entries.take(key);
    removed.reset(taken.value);
    return taken.found();
}

std::int32_t PropertyHolder::getInt(const wchar_t* key, std::int32_t defaultValue) const {
    const IProperty* property = find(key);
    return property == nullptr || property->isNull() ? defaultValue : property->toInt();
}

void* PropertyHolder::getOpaque(const wchar_t* key, std::uint64_t* bytes,
                                void* defaultValue) const {
    const IProperty* property = find(key);
    if (property == nullptr) return defaultValue;
    if (property->isOpaque()) *bytes = property->getSize();
    return property->getType() == PT_OPAQUE ? property->getData() : defaultValue;
}

void* PropertyHolder::getPointer(const wchar_t* key, void* defaultValue) const {
    std::uint64_t unused = 0;  // Equally right with 1: nobody reads the size.
    return getOpaque(key, &unused, defaultValue);
}

std::string PropertyHolder::getString(const wchar_t* key, const char* defaultValue) const {
    const IProperty* property = find(key);
    if (property == nullptr || property->isNull()) return defaultValue;
    return property->toString();
}

}  // namespace arbor
