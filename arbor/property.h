#pragma once

#include "arbor/guid.h"
#include "arbor/i_property.h"

#include <bit>
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
    // A wide text of UTF-16 units in little-endian order, which may stand at any address.
    [[nodiscard]] static IProperty* createUtf16(const unsigned char* bytes,
                                                std::size_t units) noexcept;
    [[nodiscard]] static IProperty* createOpaque(const void* data, std::uint64_t bytes) noexcept;
    // Buffers are copied; every other value word is taken as it is, so a cloned text is shared by
    // both and freed with the last of them. A text of somebody else's class is copied: it has no
    // reference count.
    [[nodiscard]] static IProperty* clone(const IProperty& source) noexcept;

protected:
    // `word` holds a pointer or the bits of a number. The pointer of a text is one that
    // TextProperty::make gave: its reference count stands in front of the characters.
    Property(std::uint32_t type, std::uint64_t word) noexcept : _type(type), _word(word) {}

    [[nodiscard]] static std::uint64_t wordOf(const void* pointer) noexcept {
        return reinterpret_cast<std::uintptr_t>(pointer);
    }
    [[nodiscard]] static std::uint64_t wordOf(std::int32_t number) noexcept {
        return static_cast<std::uint32_t>(number);
    }
    [[nodiscard]] static std::uint64_t wordOf(float number) noexcept {
        return std::bit_cast<std::uint32_t>(number);
    }
    [[nodiscard]] static std::uint64_t wordOf(double number) noexcept {
        return std::bit_cast<std::uint64_t>(number);
    }

    [[nodiscard]] void* pointer() const noexcept {
        return reinterpret_cast<void*>(static_cast<std::uintptr_t>(_word));
    }
    [[nodiscard]] std::int32_t integer() const noexcept {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(_word));
    }
    [[nodiscard]] float real() const noexcept {
        return std::bit_cast<float>(static_cast<std::uint32_t>(_word));
    }
    [[nodiscard]] double wideReal() const noexcept { return std::bit_cast<double>(_word); }

    std::uint32_t _type;
    std::uint64_t _word;

private:
    [[nodiscard]] static IProperty* copyOfText(const IProperty& source) noexcept;
};

}  // namespace arbor
