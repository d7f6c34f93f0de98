#pragma once

#include "arbor/guid.h"

#include <cstdint>
#include <string>
#include <utility>

namespace arbor {

enum PropertyType : std::uint32_t {
    PT_NULL = 1,
    PT_STRING = 2,   // narrow text in the ANSI code page
    PT_WSTRING = 3,  // wide text
    PT_OPAQUE = 4,   // a pointer or a byte buffer
    PT_INT = 5,
    PT_FLOAT = 6,
    PT_DOUBLE = 7,
    PT_UINT64 = 8
};

// One typed value of a property bag. It never changes, so no operation takes a lock and any thread
// may read it; but it must not be destroyed while another thread reads it. A conversion that has no
// meaning gives the answer of the caller's fallback. Nothing fails but memory, and only for a text:
// toString() may throw std::bad_alloc.
class IProperty {
public:
    // The answer for a conversion that has no meaning. This one always gives the same value.
    template <typename T>
    class Functor {
    public:
        explicit Functor(T value = T{}) noexcept : defaultValue(value) {}
        Functor(const Functor&) = default;
        Functor& operator=(const Functor&) = default;

        // Is given the stored type, the raw value word and the size in bytes. Stands before the
        // destructor (kept: see decision 0012).
        virtual T& operator()(std::uint32_t, std::uint64_t, std::uint64_t) { return defaultValue; }
        virtual ~Functor() = default;

        T defaultValue;
    };

    // The same for text. The text is empty unless the caller gives another.
    class StringFunctor {
    public:
        StringFunctor() = default;
        explicit StringFunctor(std::string value) : text(std::move(value)) {}
        StringFunctor(const StringFunctor&) = default;
        StringFunctor& operator=(const StringFunctor&) = default;

        virtual std::string& operator()(std::uint32_t, std::uint64_t, std::uint64_t) {
            return text;
        }
        virtual ~StringFunctor() = default;

        std::string text;
    };

    IProperty() = default;
    IProperty(const IProperty&) = delete;
    IProperty& operator=(const IProperty&) = delete;

    // The order of the operations below is part of the design (kept: see decision 0012).

    // The raw value word: the bits of a number, or the pointer of a text or buffer, which the
    // property owns.
    [[nodiscard]] virtual void* getData() const = 0;
    virtual std::string& toString(std::string& out, StringFunctor& fallback) const = 0;
    // A pointer or buffer reads as "type:4 0x" and its address.
    [[nodiscard]] virtual std::string toString() const = 0;
    // Texts are parsed with automatic base; overflow gives -1.
    [[nodiscard]] virtual std::int32_t toInt(Functor<int>& fallback) const = 0;
    [[nodiscard]] virtual std::int32_t toInt() const = 0;
    // Texts are not parsed here: only toInt() reads numbers from them.
    [[nodiscard]] virtual float toFloat(Functor<float>& fallback) const = 0;
    [[nodiscard]] virtual float toFloat() const = 0;
    [[nodiscard]] virtual double toDouble(Functor<double>& fallback) const = 0;
    [[nodiscard]] virtual double toDouble() const = 0;
    [[nodiscard]] virtual std::uint64_t toUInt64(Functor<std::uint64_t>& fallback) const = 0;
    [[nodiscard]] virtual std::uint64_t toUInt64() const = 0;
    [[nodiscard]] virtual bool isSimple() const = 0;
    [[nodiscard]] virtual bool isOpaque() const = 0;
    [[nodiscard]] virtual bool isCustom() const = 0;
    [[nodiscard]] virtual bool isNull() const = 0;
    [[nodiscard]] virtual std::uint32_t getType() const = 0;
    // Bytes of the buffer; 0 for everything that is no buffer.
    [[nodiscard]] virtual std::uint64_t getSize() const = 0;
    // Identifier of the buffer's layout, all zero where there is none. Never null.
    [[nodiscard]] virtual const Guid* getTypeId() const = 0;
    virtual ~IProperty() = default;
};

}  // namespace arbor
