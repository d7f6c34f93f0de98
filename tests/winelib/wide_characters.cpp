// The C library's functions for wide characters, for the 16-bit ones of Windows: its own ones are
// for characters of 32 bits. Hidden, so that the C library goes on using its own.
#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace {

template <typename Order>
int compared(const wchar_t* a, const wchar_t* b, std::size_t limit, Order ends) {
    for (; limit != 0; --limit, ++a, ++b) {
        if (*a != *b) return *a < *b ? -1 : 1;
        if (ends(*a)) return 0;
    }
    return 0;
}

bool isZero(wchar_t unit) {
    return unit == L'\0';
}

}  // namespace

extern "C" {

std::size_t wcslen(const wchar_t* text) {
    std::size_t units = 0;
    while (text[units] != L'\0')
        ++units;
    return units;
}

int wcscmp(const wchar_t* a, const wchar_t* b) {
    return compared(a, b, static_cast<std::size_t>(-1), isZero);
}

int wcsncmp(const wchar_t* a, const wchar_t* b, std::size_t limit) {
    return compared(a, b, limit, isZero);
}

int wmemcmp(const wchar_t* a, const wchar_t* b, std::size_t units) {
    return compared(a, b, units, [](wchar_t) { return false; });
}

wchar_t* wmemchr(const wchar_t* text, wchar_t unit, std::size_t units) {
    for (; units != 0; --units, ++text)
        if (*text == unit) return const_cast<wchar_t*>(text);
    return nullptr;
}

wchar_t* wmemset(wchar_t* to, wchar_t unit, std::size_t units) {
    for (std::size_t i = 0; i < units; ++i)
        to[i] = unit;
    return to;
}

// For numbers alone, which are what std::to_wstring writes.
int vswprintf(wchar_t* to, std::size_t units, const wchar_t* format, std::va_list arguments) {
    constexpr std::size_t kLimit = 400;  // the longest floating-point number has 317
    char narrowFormat[kLimit] = {};
    for (std::size_t i = 0; format[i] != L'\0' && i + 1 < kLimit; ++i)
        narrowFormat[i] = static_cast<char>(format[i]);
    char text[kLimit];
    const int length = std::vsnprintf(text, kLimit, narrowFormat, arguments);
    if (length < 0 || static_cast<std::size_t>(length) >= (units < kLimit ? units : kLimit))
        return -1;
    for (int i = 0; i <= length; ++i)
        to[i] = static_cast<unsigned char>(text[i]);
    return length;
}

wchar_t* wmemcpy(wchar_t* to, const wchar_t* from, std::size_t units) {
    return static_cast<wchar_t*>(__builtin_memcpy(to, from, units * sizeof(wchar_t)));
}

wchar_t* wmemmove(wchar_t* to, const wchar_t* from, std::size_t units) {
    return static_cast<wchar_t*>(__builtin_memmove(to, from, units * sizeof(wchar_t)));
}
}
