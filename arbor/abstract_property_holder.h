#pragma once

#include "arbor/i_property.h"
#include "arbor/i_property_holder.h"

#include <cstdint>
#include <string>

namespace arbor {

// A bag that holds nothing: every operation has a harmless answer. The narrow twins are written
// here once, on top of the wide operations.
class AbstractPropertyHolder : public IPropertyHolder {
public:
    IProperty* getProperty(const wchar_t* key) const override;
    IProperty* getProperty(const char* key) const override;
    bool hasProperty(const wchar_t* key) const override;
    bool hasProperty(const char* key) const override;
    bool setPointer(const wchar_t* key, void* pointer) override;
    bool setPointer(const char* key, void* pointer) override;
    bool setInt(const wchar_t* key, std::int32_t value) override;
    bool setInt(const char* key, std::int32_t value) override;
    bool setOpaque(const wchar_t* key, const void* data, std::uint64_t bytes) override;
    bool setOpaque(const char* key, const void* data, std::uint64_t bytes) override;
    bool setWString(const wchar_t* key, const wchar_t* text) override;
    bool setWString(const char* key, const wchar_t* text) override;
    bool setString(const wchar_t* key, const char* text) override;
    bool setString(const char* key, const char* text) override;
    bool setProperty(const wchar_t* key, const IProperty* property) override;
    bool setProperty(const char* key, const IProperty* property) override;
    bool removeProperty(const wchar_t* key) override;
    bool removeProperty(const char* key) override;
    std::int32_t getInt(const wchar_t* key, std::int32_t defaultValue) const override;
    std::int32_t getInt(const char* key, std::int32_t defaultValue) const override;
    void* getOpaque(const wchar_t* key, std::uint64_t* bytes, void* defaultValue) const override;
    void* getOpaque(const char* key, std::uint64_t* bytes, void* defaultValue) const override;
    void* getPointer(const wchar_t* key, void* defaultValue) const override;
    void* getPointer(const char* key, void* defaultValue) const override;
    [[nodiscard]] std::string getString(const wchar_t* key,
                                        const char* defaultValue) const override = 0;
    [[nodiscard]] std::string getString(const char* key, const char* defaultValue) const override;
    // Forwards to setProperty, so here the property stays the caller's even on true.
    bool adoptProperty(const wchar_t* key, IProperty* property) override;
    bool setPropertyAndDelete(const wchar_t* key, IProperty* property) override;
};

}  // namespace arbor
