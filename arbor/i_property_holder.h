#pragma once

#include "arbor/i_property.h"

#include <cstdint>
#include <string>

namespace arbor {

// A bag of properties under case-sensitive wide keys. Each operation on a wide key is followed by
// its twin on a narrow key in the ANSI code page, which addresses the same entry. Setters answer
// whether the value was stored. The twins and getString() may throw std::bad_alloc.
//
// Several threads may write into one bag. Nobody may read a bag while another thread writes into
// it, not even under another key: a write may move the other entries, and readers take no lock.
class IPropertyHolder {
public:
    IPropertyHolder() = default;
    IPropertyHolder(const IPropertyHolder&) = delete;
    IPropertyHolder& operator=(const IPropertyHolder&) = delete;

    // The order of the operations below is part of the design (kept: see decision 0012).

    // Never null: NullProperty::instance() for an absent key. Owned by the bag, and valid until the
    // key is next replaced or removed.
    virtual IProperty* getProperty(const wchar_t* key) const = 0;
    virtual IProperty* getProperty(const char* key) const = 0;
    virtual bool hasProperty(const wchar_t* key) const = 0;
    virtual bool hasProperty(const char* key) const = 0;
    // The pointer is stored as it is; what it designates stays the caller's.
    virtual bool setPointer(const wchar_t* key, void* pointer) = 0;
    virtual bool setPointer(const char* key, void* pointer) = 0;
    virtual bool setInt(const wchar_t* key, std::int32_t value) = 0;
    virtual bool setInt(const char* key, std::int32_t value) = 0;
    // The bytes are copied.
    virtual bool setOpaque(const wchar_t* key, const void* data, std::uint64_t bytes) = 0;
    virtual bool setOpaque(const char* key, const void* data, std::uint64_t bytes) = 0;
    // The text is copied.
    virtual bool setWString(const wchar_t* key, const wchar_t* text) = 0;
    virtual bool setWString(const char* key, const wchar_t* text) = 0;
    virtual bool setString(const wchar_t* key, const char* text) = 0;
    virtual bool setString(const char* key, const char* text) = 0;
    // Stores a clone; the caller keeps `property`.
    virtual bool setProperty(const wchar_t* key, const IProperty* property) = 0;
    virtual bool setProperty(const char* key, const IProperty* property) = 0;
    // False when there was nothing to remove.
    virtual bool removeProperty(const wchar_t* key) = 0;
    virtual bool removeProperty(const char* key) = 0;
    // The default stands for an absent key only: what cannot be converted reads as 0.
    virtual std::int32_t getInt(const wchar_t* key, std::int32_t defaultValue) const = 0;
    virtual std::int32_t getInt(const char* key, std::int32_t defaultValue) const = 0;
    // `bytes` is written for a buffer only.
    virtual void* getOpaque(const wchar_t* key, std::uint64_t* bytes, void* defaultValue) const = 0;
    virtual void* getOpaque(const char* key, std::uint64_t* bytes, void* defaultValue) const = 0;
    virtual void* getPointer(const wchar_t* key, void* defaultValue) const = 0;
    virtual void* getPointer(const char* key, void* defaultValue) const = 0;
    // Narrow text of any property; `defaultValue` must not be null.
    [[nodiscard]] virtual std::string getString(const wchar_t* key,
                                                const char* defaultValue) const = 0;
    [[nodiscard]] virtual std::string getString(const char* key,
                                                const char* defaultValue) const = 0;
    // On true the bag owns `property`; on false it is still the caller's. Null and the null
    // property are refused. `property` may stand under this key already, but under no other key of
    // any bag.
    virtual bool adoptProperty(const wchar_t* key, IProperty* property) = 0;
    // Stores a clone and destroys `property`, whatever came of it. Null and the null property are
    // refused with false; what already stands under the key stays there, with true. It reads the
    // bag before it writes, so it may not run beside another writer of the same bag.
    virtual bool setPropertyAndDelete(const wchar_t* key, IProperty* property) = 0;

    virtual ~IPropertyHolder() = default;
};

}  // namespace arbor
