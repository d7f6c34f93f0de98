#include "ui/bag_text.h"

#include "arbor/i_property.h"
#include "arbor/i_property_holder.h"
#include "platform/text.h"

#include <new>

std::wstring bagText(const arbor::IPropertyHolder& bag, const wchar_t* key,
                     const wchar_t* defaultText) {
    const arbor::IProperty* property = bag.getProperty(key);
    if (property->isNull()) return defaultText;
    if (property->getType() != arbor::PT_WSTRING) return platform::widened(property->toString());
    // A text that could not be copied when it was stored is there without its letters.
    const auto* text = static_cast<const wchar_t*>(property->getData());
    return text != nullptr ? std::wstring(text) : std::wstring();
}

void putText(arbor::IPropertyHolder& bag, const wchar_t* key, const std::wstring& text) {
    const bool isStored = bag.setWString(key, text.c_str());
    // The bag answers true also for a text that it had no memory to copy, and stores a null for it.
    if (!isStored || bag.getProperty(key)->getData() == nullptr) throw std::bad_alloc();
}

void putInt(arbor::IPropertyHolder& bag, const wchar_t* key, std::int32_t value) {
    if (!bag.setInt(key, value)) throw std::bad_alloc();
}
