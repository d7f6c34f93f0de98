#pragma once

#include "arbor/abstract_property_holder.h"
#include "arbor/dictionary.h"
#include "arbor/i_property.h"
#include "arbor/key.h"
#include "arbor/property_slots.h"
#include "arbor/synchronized.h"
#include "arbor/thread_annotations.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

namespace arbor {

// The working bag. Owns what is stored in it. Writers take its lock around the change alone, and
// destroy what they replaced after it. Readers take no lock, so nobody may read while another
// thread writes into the same bag, whatever the key: entries move.
//
// When memory runs out a setter of a wide key answers false and the old value stays, with one
// exception: where only the copy of a text or buffer finds no memory, the setter stores a property
// with a null text or buffer, which reads as empty, and answers true.
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

    // Operations from above for a key that is measured already. They are not virtual: the override
    // of a derived class is reached with a pointer to the text only.
    bool setPointer(Key key, void* pointer);
    bool setInt(Key key, std::int32_t value);
    bool setWString(Key key, const wchar_t* text);
    bool setString(Key key, const char* text);
    bool adoptProperty(Key key, IProperty* property);
    bool removeProperty(Key key);
    [[nodiscard]] std::int32_t getInt(Key key, std::int32_t defaultValue) const;
    [[nodiscard]] void* getPointer(Key key, void* defaultValue) const;
    [[nodiscard]] std::string getString(Key key, const char* defaultValue) const;

protected:
    using Entries = dictionary<std::wstring, IProperty*, int, std::numeric_limits<int>::max(), 1>;

    // `key` is a Key or a terminated text. Null for an absent key. The compiler does not check this
    // access: readers take no lock.
    [[nodiscard]] IProperty* find(Key key) const noexcept ARBOR_UNCHECKED {
        return _entries.get(key.view(), nullptr);
    }
    [[nodiscard]] IProperty* find(const wchar_t* key) const noexcept ARBOR_UNCHECKED {
        return _entries.get(key, nullptr);
    }

private:
    using Owned = std::unique_ptr<IProperty>;

    // Takes `property` over, or destroys it when it cannot be stored: the end of typed setters.
    bool store(Key key, Owned property);
    // Puts `property` under the key and takes it over; `replaced` is what stood there. False leaves
    // it to the caller. Both must be destroyed after the lock.
    bool put(Key key, Owned& property, Owned& replaced) noexcept ARBOR_REQUIRES(this);
    template <typename AnyKey>
    bool removed(AnyKey key);

protected:
    PropertySlots _slots ARBOR_GUARDED_BY(this);  // making needs the lock, destroying does not
    Entries _entries ARBOR_GUARDED_BY(this);      // owns its values; the lock is for writing
};

}  // namespace arbor
