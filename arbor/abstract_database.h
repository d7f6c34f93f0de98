#pragma once

#include "arbor/guid.h"
#include "arbor/i_database.h"
#include "arbor/i_property.h"
#include "arbor/property_holder.h"
#include "arbor/thread_annotations.h"

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace arbor {

// A property bag that is addressed as a database. The number of an entry is its symbol in the bag.
class AbstractDatabase : public PropertyHolder, public IDatabase {
public:
    using Observers = std::map<std::uint32_t, std::vector<DatabaseObserver*>>;
    static constexpr std::uint32_t kAllEntries = 0;
    // Second key of the entry that holds the identifier of a class; the first is the class's name.
    static constexpr wchar_t kGuidKey[] = L"GUID";

    ~AbstractDatabase() override = default;

    bool isReady() override { return true; }
    bool contains(const wchar_t* key1, const wchar_t* key2) override;
    bool contains(const wchar_t* flatKey) override;
    bool contains(std::uint32_t id) override;
    std::uint32_t getId(const CompoundKey& key) override;
    IProperty* get(const wchar_t* key1, const wchar_t* key2) override;
    IProperty* get(const wchar_t* flatKey) override;
    IProperty* get(std::uint32_t id) override;
    bool set(const wchar_t* key1, const wchar_t* key2, IProperty* property,
             DatabaseObserver* observer = nullptr) override;
    bool set(const wchar_t* flatKey, IProperty* property,
             DatabaseObserver* observer = nullptr) override;
    bool set(std::uint32_t id, IProperty* property, DatabaseObserver* observer = nullptr) override;
    bool remove(const wchar_t* key1, const wchar_t* key2) override;
    bool remove(const wchar_t* flatKey) override;
    bool remove(std::uint32_t id) override;
    void addObserver(DatabaseObserver* observer) override;
    void addObserver(DatabaseObserver* observer, const wchar_t* flatKey) override;
    void removeObserver(DatabaseObserver* observer) override;
    void getGuid(Guid& guid, const wchar_t* className) override;
    void getGuid(Guid& guid, const char* className) override;

    // For code that wants to call the observers. Takes no lock, so nobody may change them during
    // the call.
    [[nodiscard]] const Observers& observers() const noexcept ARBOR_UNCHECKED { return _observers; }

private:
    // What must be destroyed after the lock when `property` stands where `old` stood; may be null.
    [[nodiscard]] static std::unique_ptr<IProperty> replacedBy(const IProperty* property,
                                                               const Entries::Taken& old);
    // The end of remove(): the observers go too, and the caller destroys what was `removed` after
    // the lock.
    bool forget(const Entries::Taken& taken, std::unique_ptr<IProperty>& removed)
        ARBOR_REQUIRES(this);

    Observers _observers ARBOR_GUARDED_BY(this);  // not owned
};

}  // namespace arbor
