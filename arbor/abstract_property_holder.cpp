#include "arbor/abstract_property_holder.h"

#include "arbor/null_property.h"
#include "arbor/property.h"
#include "arbor/wide_key.h"

#include <cstring>
#include <cwchar>
#include <memory>

namespace arbor {

IProperty* AbstractPropertyHolder::getProperty(const wchar_t*) const {
    return &NullProperty::instance();
}
bool AbstractPropertyHolder::hasProperty(const wchar_t*) const {
    return false;
}
bool AbstractPropertyHolder::setProperty(const wchar_t*, const IProperty*) {
    return false;
}
bool AbstractPropertyHolder::removeProperty(const wchar_t*) {
    return false;
}

// This class does not know how a derived class stores its properties. So the typed setters make one
// and offer it to setProperty, which copies what it keeps. PropertyHolder overrides them: it takes
// the new property itself and saves the copy.
bool AbstractPropertyHolder::setPointer(const wchar_t* key, void* pointer) {
    return setPropertyAndDelete(key, Property::createPointer(pointer));
}
bool AbstractPropertyHolder::setInt(const wchar_t* key, std::int32_t value) {
    return setPropertyAndDelete(key, Property::createInt(value));
}
bool AbstractPropertyHolder::setOpaque(const wchar_t* key, const void* data, std::uint64_t bytes) {
    return setPropertyAndDelete(key, Property::createOpaque(data, bytes));
}
bool AbstractPropertyHolder::setWString(const wchar_t* key, const wchar_t* text) {
    return setPropertyAndDelete(key, Property::createWString(text, std::wcslen(text)));
}
bool AbstractPropertyHolder::setString(const wchar_t* key, const char* text) {
    return setPropertyAndDelete(key, Property::createString(text, std::strlen(text)));
}

std::int32_t AbstractPropertyHolder::getInt(const wchar_t*, std::int32_t defaultValue) const {
    return defaultValue;
}
void* AbstractPropertyHolder::getOpaque(const wchar_t*, std::uint64_t*, void* defaultValue) const {
    return defaultValue;
}
void* AbstractPropertyHolder::getPointer(const wchar_t* key, void* defaultValue) const {
    // getOpaque wants a place for the size of a buffer, and a pointer has no size.
    std::uint64_t unused = 0;  // Equally right with 1: nobody reads the size.
    return getOpaque(key, &unused, defaultValue);
}

bool AbstractPropertyHolder::adoptProperty(const wchar_t* key, IProperty* property) {
    return NullProperty::mayBeAdopted(property) && setProperty(key, property);
}
bool AbstractPropertyHolder::setPropertyAndDelete(const wchar_t* key, IProperty* property) {
    if (!NullProperty::mayBeAdopted(property)) return false;
    // What stands under the key already is stored: destroying it here would leave the bag with a
    // pointer to freed memory.
    if (property == getProperty(key)) return true;
    const std::unique_ptr<IProperty> owned(property);
    return setProperty(key, owned.get());
}

// The narrow twins only widen the key. They call the wide operation through the object, so a
// derived class that overrides the wide one has changed both.
IProperty* AbstractPropertyHolder::getProperty(const char* key) const {
    return getProperty(WideKey(key).text());
}
bool AbstractPropertyHolder::hasProperty(const char* key) const {
    return hasProperty(WideKey(key).text());
}
bool AbstractPropertyHolder::setPointer(const char* key, void* pointer) {
    return setPointer(WideKey(key).text(), pointer);
}
bool AbstractPropertyHolder::setInt(const char* key, std::int32_t value) {
    return setInt(WideKey(key).text(), value);
}
bool AbstractPropertyHolder::setOpaque(const char* key, const void* data, std::uint64_t bytes) {
    return setOpaque(WideKey(key).text(), data, bytes);
}
bool AbstractPropertyHolder::setWString(const char* key, const wchar_t* text) {
    return setWString(WideKey(key).text(), text);
}
bool AbstractPropertyHolder::setString(const char* key, const char* text) {
    return setString(WideKey(key).text(), text);
}
bool AbstractPropertyHolder::setProperty(const char* key, const IProperty* property) {
    return setProperty(WideKey(key).text(), property);
}
bool AbstractPropertyHolder::removeProperty(const char* key) {
    return removeProperty(WideKey(key).text());
}
std::int32_t AbstractPropertyHolder::getInt(const char* key, std::int32_t defaultValue) const {
    return getInt(WideKey(key).text(), defaultValue);
}
void* AbstractPropertyHolder::getOpaque(const char* key, std::uint64_t* bytes,
                                        void* defaultValue) const {
    return getOpaque(WideKey(key).text(), bytes, defaultValue);
}
void* AbstractPropertyHolder::getPointer(const char* key, void* defaultValue) const {
    return getPointer(WideKey(key).text(), defaultValue);
}
std::string AbstractPropertyHolder::getString(const char* key, const char* defaultValue) const {
    return getString(WideKey(key).text(), defaultValue);
}

}  // namespace arbor
