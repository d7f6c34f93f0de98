#pragma once

#include "arbor/guid.h"

#include <cstdint>
#include <string>
#include <vector>

namespace arbor {

class IProperty;

// Of any type: the database only records observers, it never calls them.
using DatabaseObserver = void;

// Properties addressed by compound keys, by flat keys or by the number of their entry. A missing
// entry reads as the null property, never as a null pointer. Whatever makes a flat key of several
// components or of a class name may throw std::bad_alloc, and so may addObserver().
class IDatabase {
public:
    // Key components in order. Components are written as they are: a "/" in one is not escaped.
    class CompoundKey : public std::vector<std::wstring> {
    public:
        using std::vector<std::wstring>::vector;
        CompoundKey(const CompoundKey&) = default;
        CompoundKey& operator=(const CompoundKey&) = default;

        // The flat key: each component after a "/". Stands before the destructor (kept: see
        // decision 0012).
        [[nodiscard]] virtual std::wstring toString() const;
        virtual ~CompoundKey() = default;
    };

    IDatabase() = default;
    IDatabase(const IDatabase&) = delete;
    IDatabase& operator=(const IDatabase&) = delete;

    // The order of the operations below is part of the design (kept: see decision 0012). `set`
    // answers whether the value was stored; the database then owns the property, else it is still
    // the caller's. Null and the null property are refused. Observers are not owned.
    virtual bool isReady() = 0;
    virtual bool contains(const wchar_t* key1, const wchar_t* key2) = 0;
    virtual bool contains(const wchar_t* flatKey) = 0;
    virtual bool contains(std::uint32_t id) = 0;
    // 0 when there is no such entry.
    virtual std::uint32_t getId(const CompoundKey& key) = 0;
    // Owned by the database, valid until the entry is set or removed.
    virtual IProperty* get(const wchar_t* key1, const wchar_t* key2) = 0;
    virtual IProperty* get(const wchar_t* flatKey) = 0;
    virtual IProperty* get(std::uint32_t id) = 0;
    // An existing entry keeps its number; an observer is recorded for a new entry only.
    virtual bool set(const wchar_t* key1, const wchar_t* key2, IProperty* property,
                     DatabaseObserver* observer = nullptr) = 0;
    virtual bool set(const wchar_t* flatKey, IProperty* property,
                     DatabaseObserver* observer = nullptr) = 0;
    virtual bool set(std::uint32_t id, IProperty* property,
                     DatabaseObserver* observer = nullptr) = 0;
    // The observers of the entry go with it. False when there was no entry.
    virtual bool remove(const wchar_t* key1, const wchar_t* key2) = 0;
    virtual bool remove(const wchar_t* flatKey) = 0;
    virtual bool remove(std::uint32_t id) = 0;
    // Records the observer for all entries, or for one. Ignored when there is no such entry.
    virtual void addObserver(DatabaseObserver* observer) = 0;
    virtual void addObserver(DatabaseObserver* observer, const wchar_t* flatKey) = 0;
    // Takes the first record of the observer out of the list of every entry.
    virtual void removeObserver(DatabaseObserver* observer) = 0;
    // GUID of a class; all zero when the class is unknown or its entry is not 16 bytes long.
    virtual void getGuid(Guid& guid, const wchar_t* className) = 0;
    virtual void getGuid(Guid& guid, const char* className) = 0;

    virtual ~IDatabase() = default;
};

}  // namespace arbor
