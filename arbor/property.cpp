#include "arbor/property.h"

#include "arbor/custom_property.h"
#include "arbor/number_text.h"
#include "arbor/opaque_property.h"
#include "arbor/text_property.h"
#include "platform/text.h"

#include <cstring>
#include <cwchar>
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
    // Equally right with >: -2^63 is also the value for all numbers out of range.
    if (value >= -kTwoTo63 && value < kTwoTo63) return static_cast<std::int64_t>(value);
    return std::numeric_limits<std::int64_t>::min();
}

std::uint64_t truncatedUnsigned(double value) noexcept {
    // Equally right with >=: both ways give 2^63 for 2^63.
    if (!(value > kTwoTo63)) return static_cast<std::uint64_t>(truncated64(value));
    return static_cast<std::uint64_t>(truncated64(value - kTwoTo63)) + (std::uint64_t{1} << 63);
}

constexpr std::uint64_t kNoText = 0;  // value word of a text whose copy found no memory

// The characters of a text property. A null text reads as an empty one.
const char* narrowOf(const void* text) noexcept {
    return text != nullptr ? static_cast<const char*>(text) : "";
}
const wchar_t* wideOf(const void* text) noexcept {
    return text != nullptr ? static_cast<const wchar_t*>(text) : L"";
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
    if (_type == PT_STRING || _type == PT_WSTRING) TextProperty::release(pointer());
}

void* Property::getData() const {
    return pointer();
}

std::string& Property::toString(std::string& out, StringFunctor& fallback) const {
    switch (_type) {
        case PT_STRING:
            out = narrowOf(pointer());
            break;
        case PT_WSTRING:
            out = narrowText(wideOf(pointer()));
            break;
        case PT_INT:
            out = decimalText(integer());
            break;
        case PT_FLOAT:
            out = generalText(static_cast<double>(real()));
            break;
        case PT_DOUBLE:
            out = generalText(wideReal());
            break;
        case PT_UINT64:
            out = decimalText(_word);
            break;
        default:
            out = fallback(_type, _word, getSize());
    }
    return out;
}

std::string Property::toString() const {
    if (_type == PT_STRING) return narrowOf(pointer());
    std::string out;
    OpaqueStringFunctor fallback;
    return std::move(toString(out, fallback));
}

std::int32_t Property::toInt(Functor<int>& fallback) const {
    switch (_type) {
        case PT_STRING:
            return static_cast<std::int32_t>(parsedNumber(narrowOf(pointer())));
        case PT_WSTRING:
            return static_cast<std::int32_t>(parsedNumber(wideOf(pointer())));
        case PT_INT:
            return integer();
        case PT_FLOAT:
            return truncated32(static_cast<double>(real()));
        case PT_DOUBLE:
            return truncated32(wideReal());
        case PT_UINT64:
            return integer();
        default:
            return fallback(_type, _word, getSize());
    }
}

std::int32_t Property::toInt() const {
    if (_type == PT_INT) return integer();
    Functor<int> zero;
    return toInt(zero);
}

float Property::toFloat(Functor<float>& fallback) const {
    switch (_type) {
        case PT_INT:
            return static_cast<float>(integer());
        case PT_FLOAT:
            return real();
        case PT_DOUBLE:
            return static_cast<float>(wideReal());
        case PT_UINT64:
            return static_cast<float>(_word);
        default:
            return fallback(_type, _word, getSize());
    }
}

float Property::toFloat() const {
    Functor<float> zero;
    return toFloat(zero);
}

double Property::toDouble(Functor<double>& fallback) const {
    switch (_type) {
        case PT_INT:
            return integer();
        case PT_FLOAT:
            return static_cast<double>(real());
        case PT_DOUBLE:
            return wideReal();
        case PT_UINT64:
            return static_cast<double>(_word);
        default:
            return fallback(_type, _word, getSize());
    }
}

double Property::toDouble() const {
    Functor<double> zero;
    return toDouble(zero);
}

std::uint64_t Property::toUInt64(Functor<std::uint64_t>& fallback) const {
    switch (_type) {
        case PT_INT:
            return static_cast<std::uint64_t>(std::int64_t{integer()});
        case PT_FLOAT:
            return truncatedUnsigned(static_cast<double>(real()));
        case PT_DOUBLE:
            return truncatedUnsigned(wideReal());
        case PT_UINT64:
            return _word;
        default:
            return fallback(_type, _word, getSize());
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
    return new (std::nothrow) Property(PT_OPAQUE, wordOf(pointer));
}

IProperty* Property::createInt(std::int32_t number) noexcept {
    return new (std::nothrow) Property(PT_INT, wordOf(number));
}

// Without memory for the text we still try to make a property: its null text reads as empty, and
// the caller's key is not lost.
IProperty* Property::createString(const char* text, std::size_t bytes) noexcept {
    IProperty* property = TextProperty::make(text, bytes);
    return property != nullptr ? property : new (std::nothrow) Property(PT_STRING, kNoText);
}

IProperty* Property::createWString(const wchar_t* text, std::size_t units) noexcept {
    IProperty* property = TextProperty::make(text, units);
    return property != nullptr ? property : new (std::nothrow) Property(PT_WSTRING, kNoText);
}

IProperty* Property::createUtf16(const unsigned char* bytes, std::size_t units) noexcept {
    IProperty* property = TextProperty::makeUtf16(bytes, units);
    return property != nullptr ? property : new (std::nothrow) Property(PT_WSTRING, kNoText);
}

IProperty* Property::createOpaque(const void* data, std::uint64_t bytes) noexcept {
    return new (std::nothrow) OpaqueProperty(data, bytes);
}

IProperty* Property::copyOfText(const IProperty& source) noexcept {
    const void* text = source.getData();
    if (text == nullptr) return new (std::nothrow) Property(source.getType(), kNoText);
    if (source.getType() == PT_STRING) {
        const char* narrow = narrowOf(text);
        return createString(narrow, std::strlen(narrow));
    }
    const wchar_t* wide = wideOf(text);
    return createWString(wide, std::wcslen(wide));
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

    const bool isText = type == PT_STRING || type == PT_WSTRING;
    // Only the classes derived from Property keep a reference count in front of their text.
    // Counting in front of any other text would write into memory that is not ours.
    if (isText && dynamic_cast<const Property*>(&source) == nullptr) return copyOfText(source);

    auto* property = new (std::nothrow) Property(type, wordOf(source.getData()));
    if (property != nullptr && isText) TextProperty::share(property->pointer());
    return property;
}

}  // namespace arbor
