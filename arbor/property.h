#pragma once

#include "arbor/guid.h"
#include "arbor/i_property.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace arbor {

// The plain value: null, text, pointer or number. Owns its text; never what a pointer designates.
class Property : public IProperty {
public:
    // Answers with the address of what cannot be read as text.
    class OpaqueStringFunctor : public StringFunctor {
    public:
        std::string& operator()(std::uint32_t type, std::uint64_t value,
                                std::uint64_t size) override;
    };

    ~Property() override;

    [[nodiscard]] void* getData() const override;
    std::string& toString(std::string& out, StringFunctor& fallback) const override;
    [[nodiscard]] std::string toString() const override;
    [[nodiscard]] std::int32_t toInt(Functor<int>& fallback) const override;
    [[nodiscard]] std::int32_t toInt() const override;
    [[nodiscard]] float toFloat(Functor<float>& fallback) const override;
    [[nodiscard]] float toFloat() const override;
    [[nodiscard]] double toDouble(Functor<double>& fallback) const override;
    [[nodiscard]] double toDouble() const override;
    [[nodiscard]] std::uint64_t toUInt64(Functor<std::uint64_t>& fallback) const override;
    [[nodiscard]] std::uint64_t toUInt64() const override;
    [[nodiscard]] bool isSimple() const override { return true; }
    [[nodiscard]] bool isOpaque() const override { return false; }
    [[nodiscard]] bool isCustom() const override { return false; }
    [[nodiscard]] bool isNull() const override { return false; }
    [[nodiscard]] std::uint32_t getType() const override { return _type; }
    [[nodiscard]] std::uint64_t getSize() const override { return 0; }
    [[nodiscard]] const Guid* getTypeId() const override;

    // Creators. The caller owns the result; null when the property cannot be allocated. Where only
    // the copy of the text cannot be, the property comes with a null text, which reads as empty.
    [[nodiscard]] static IProperty* createPointer(void* pointer) noexcept;
    [[nodiscard]] static IProperty* createInt(std::int32_t number) noexcept;
    [[nodiscard]] static IProperty* createString(const char* text, std::size_t bytes) noexcept;
    [[nodiscard]] static IProperty* createWString(const wchar_t* text, std::size_t units) noexcept;
    [[nodiscard]] static IProperty* createOpaque(const void* data, std::uint64_t bytes) noexcept;
    // Buffers are copied; every other value word is taken as it is, so a cloned text is shared by
    // both and freed with the last of them.
    [[nodiscard]] static IProperty* clone(const IProperty& source) noexcept;

protected:
    // One word. A text is one that TextProperty::make copied.
    union Value {
        std::uint64_t word;
        const char* text;
        const wchar_t* wideText;
        void* pointer;
        std::int32_t integer;
        float real;
        double wideReal;
    };

    Property(std::uint32_t type, Value value) noexcept : _type(type), _value(value) {}

    std::uint32_t _type;
    Value _value;
};

}  // namespace arbor
