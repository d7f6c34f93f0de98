#include "arbor/wide_key.h"

#include "platform/text.h"

namespace arbor {

WideKey::WideKey(const char* key) {
    _text = _short;
    for (std::size_t index = 0; index < kShortUnits; ++index) {
        const auto byte = static_cast<unsigned char>(key[index]);
        if (byte > 0x7F) break;  // only the system knows the letters of its code page
        _short[index] = static_cast<wchar_t>(byte);
        if (byte == 0) return;
    }
    _long = platform::widened(key);
    if (_long.size() >= kConversionLimit) _long.resize(kConversionLimit - 1);
    _text = _long.c_str();
}

}  // namespace arbor
