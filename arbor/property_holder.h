#pragma once

#include "arbor/abstract_property_holder.h"
#include "arbor/dictionary.h"
#include "arbor/i_property.h"
#include "arbor/property_slots.h"
#include "arbor/synchronized.h"
#include "arbor/thread_annotations.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

namespace arbor {

// The working bag. Owns what is stored in it. Writers take its lock around the change alone;
// readers take none, so a reader must not race a writer of the same key. Memory that runs out makes
// a setter answer false, with the old value still in place.
class PropertyHolder : public AbstractPropertyHolder, public Synchronized {
public:
    PropertyHolder() = default;
    ~PropertyHolder() override;

    using AbstractPropertyHolder::adoptProperty;
    using AbstractPropertyHolder::getInt;
    using AbstractPropertyHolder::getOpaque;
    using AbstractPropertyHolder::getPointer;
    using AbstractPropertyHolder::getProperty;
    using AbstractPropertyHolder::getString;
    using AbstractPropertyHolder::hasProperty;
    using AbstractPropertyHolder::removeProperty;
    using AbstractPropertyHolder::setInt;
    using AbstractPropertyHolder::setOpaque;
    using AbstractPropertyHolder::setPointer;
    using AbstractPropertyHolder::setProperty;
    using AbstractPropertyHolder::setString;
    using AbstractPropertyHolder::setWString;

    IProperty* getProperty(const wchar_t* key) const override;
    bool hasProperty(const wchar_t* key) const override ARBOR_UNCHECKED;
    bool setPointer(const wchar_t* key, void* pointer) override;
    bool setInt(const wchar_t* key, std::int32_t value) override;
    bool setOpaque(const wchar_t* key, const void* data, std::uint64_t bytes) override;
    bool setWString(const wchar_t* key, const wchar_t* text) override;
    bool setString(const wchar_t* key, const char* text) override;
    bool setProperty(const wchar_t* key, const IProperty* property) override;
    bool removeProperty(const wchar_t* key) override;
    std::int32_t getInt(const wchar_t* key, std::int32_t defaultValue) const override;
    void* getOpaque(const wchar_t* key, std::uint64_t* bytes, void* defaultValue) const override;
    void* getPointer(const wchar_t* key, void* defaultValue) const override;
    [[nodiscard]] std::string getString(const wchar_t* key,
                                        const char* defaultValue) const override;
    bool adoptProperty(const wchar_t* key, IProperty* property) override;

protected:
    using Entries = dictionary<std::wstring, IProperty*, int, std::numeric_limits<int>::max(), 1>;

    // Null for an absent key. Unchecked, as hasProperty is: readers take no lock.
    [[nodiscard]] IProperty* find(const wchar_t* key) const noexcept ARBOR_UNCHECKED {
        return _entries.get(key, nullptr);
    }
    // Stores a new property or lets it go; the tail of every typed setter.
    bool store(const wchar_t* key, IProperty* property);

    PropertySlots _slots;
    Entries _entries ARBOR_GUARDED_BY(this);  // owns its values; the lock is for writing
};

}  // namespace arbor
