#include "arbor/property.h"

#include "arbor/custom_property.h"
#include "arbor/number_text.h"
#include "arbor/opaque_property.h"
#include "arbor/text_property.h"
#include "platform/text.h"

#include <limits>
#include <new>
#include <utility>

namespace arbor {

namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr std::size_t kNarrowTextLimit = 32768;  // bytes of a converted text, terminator included

// A cast of a number out of range is undefined in C++; the processor of this system answers with
// the smallest number, and so do these.
std::int32_t truncated32(double value) noexcept {
    constexpr double kLow = -2147483649.0;
    constexpr double kHigh = 2147483648.0;
    if (value > kLow && value < kHigh) return static_cast<std::int32_t>(value);
    return std::numeric_limits<std::int32_t>::min();
}

std::int64_t truncated64(double value) noexcept {
    if (value >= -kTwoTo63 && value < kTwoTo63) return static_cast<std::int64_t>(value);
    return std::numeric_limits<std::int64_t>::min();
}

std::uint64_t truncatedUnsigned(double value) noexcept {
    if (!(value > kTwoTo63)) return static_cast<std::uint64_t>(truncated64(value));
    return static_cast<std::uint64_t>(truncated64(value - kTwoTo63)) + (std::uint64_t{1} << 63);
}

std::string narrowText(const wchar_t* text) {
    std::string narrow = platform::narrowed(text);
    if (narrow.size() >= kNarrowTextLimit) narrow.resize(kNarrowTextLimit - 1);
    return narrow;
}

}  // namespace

std::string& Property::OpaqueStringFunctor::operator()(std::uint32_t type, std::uint64_t value,
                                                       std::uint64_t) {
    constexpr char kHexDigits[] = "0123456789ABCDEF";
    text = "type:" + decimalText(std::uint64_t{type}) + " 0x";
    for (int shift = 60; shift >= 0; shift -= 4)
        text += kHexDigits[(value >> shift) & 0xF];
    return text;
}

Property::~Property() {
    if (_type == PT_STRING || _type == PT_WSTRING) TextProperty::release(_value.pointer);
}

void* Property::getData() const {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(_value.word));
}

std::string& Property::toString(std::string& out, StringFunctor& fallback) const {
    switch (_type) {
        case PT_STRING:
            out = _value.text != nullptr ? _value.text : "";
            break;
        case PT_WSTRING:
            out = _value.wideText != nullptr ? narrowText(_value.wideText) : "";
            break;
        case PT_INT:
            out = decimalText(_value.integer);
            break;
        case PT_FLOAT:
            out = generalText(static_cast<double>(_value.real));
            break;
        case PT_DOUBLE:
            out = generalText(_value.wideReal);
            break;
        case PT_UINT64:
            out = decimalText(_value.word);
            break;
        default:
            out = fallback(_type, _value.word, getSize());
    }
    return out;
}

std::string Property::toString() const {
    if (_type == PT_STRING) return _value.text != nullptr ? _value.text : "";
    std::string out;
    OpaqueStringFunctor fallback;
    return std::move(toString(out, fallback));
}

std::int32_t Property::toInt(Functor<int>& fallback) const {
    switch (_type) {
        case PT_STRING:
            return _value.text != nullptr ? static_cast<std::int32_t>(parsedNumber(_value.text))
                                          : 0;
        case PT_WSTRING:
            return _value.wideText != nullptr
                       ? static_cast<std::int32_t>(parsedNumber(_value.wideText))
                       : 0;
        case PT_INT:
            return _value.integer;
        case PT_FLOAT:
            return truncated32(static_cast<double>(_value.real));
        case PT_DOUBLE:
            return truncated32(_value.wideReal);
        case PT_UINT64:
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(_value.word));
        default:
            return fallback(_type, _value.word, getSize());
    }
}

std::int32_t Property::toInt() const {
    if (_type == PT_INT) return _value.integer;
    Functor<int> zero;
    return toInt(zero);
}

float Property::toFloat(Functor<float>& fallback) const {
    switch (_type) {
        case PT_INT:
            return static_cast<float>(_value.integer);
        case PT_FLOAT:
            return _value.real;
        case PT_DOUBLE:
            return static_cast<float>(_value.wideReal);
        case PT_UINT64:
            return static_cast<float>(_value.word);
        default:
            return fallback(_type, _value.word, getSize());
    }
}

float Property::toFloat() const {
    Functor<float> zero;
    return toFloat(zero);
}

double Property::toDouble(Functor<double>& fallback) const {
    switch (_type) {
        case PT_INT:
            return _value.integer;
        case PT_FLOAT:
            return static_cast<double>(_value.real);
        case PT_DOUBLE:
            return _value.wideReal;
        case PT_UINT64:
            return static_cast<double>(_value.word);
        default:
            return fallback(_type, _value.word, getSize());
    }
}

double Property::toDouble() const {
    Functor<double> zero;
    return toDouble(zero);
}

std::uint64_t Property::toUInt64(Functor<std::uint64_t>& fallback) const {
    switch (_type) {
        case PT_INT:
            return static_cast<std::uint64_t>(std::int64_t{_value.integer});
        case PT_FLOAT:
            return truncatedUnsigned(static_cast<double>(_value.real));
        case PT_DOUBLE:
            return truncatedUnsigned(_value.wideReal);
        case PT_UINT64:
            return _value.word;
        default:
            return fallback(_type, _value.word, getSize());
    }
}

std::uint64_t Property::toUInt64() const {
    Functor<std::uint64_t> zero;
    return toUInt64(zero);
}

const Guid* Property::getTypeId() const {
    static const Guid noLayout;
    return &noLayout;
}

IProperty* Property::createPointer(void* pointer) noexcept {
    Value value{0};
    value.pointer = pointer;
    return new (std::nothrow) Property(PT_OPAQUE, value);
}

IProperty* Property::createInt(std::int32_t number) noexcept {
    Value value{0};
    value.integer = number;
    return new (std::nothrow) Property(PT_INT, value);
}

// Where there is no memory for the text, there may be some for a property without it.
IProperty* Property::createString(const char* text, std::size_t bytes) noexcept {
    IProperty* property = TextProperty::make(text, bytes);
    return property != nullptr ? property : new (std::nothrow) Property(PT_STRING, Value{0});
}

IProperty* Property::createWString(const wchar_t* text, std::size_t units) noexcept {
    IProperty* property = TextProperty::make(text, units);
    return property != nullptr ? property : new (std::nothrow) Property(PT_WSTRING, Value{0});
}

IProperty* Property::createOpaque(const void* data, std::uint64_t bytes) noexcept {
    return new (std::nothrow) OpaqueProperty(data, bytes);
}

IProperty* Property::clone(const IProperty& source) noexcept {
    const std::uint32_t type = source.getType();
    if (source.isCustom()) {
        return new (std::nothrow)
            CustomProperty(type, source.getData(), source.getSize(), *source.getTypeId());
    }
    if (source.isOpaque()) {
        return new (std::nothrow) OpaqueProperty(type, source.getData(), source.getSize());
    }

    Value value{0};
    value.pointer = source.getData();
    auto* property = new (std::nothrow) Property(type, value);
    if (property != nullptr && (type == PT_STRING || type == PT_WSTRING))
        TextProperty::share(value.pointer);
    return property;
}

}  // namespace arbor
