#include "ui/bag_writing.h"

#include "arbor/i_property.h"
#include "arbor/i_property_holder.h"

#include <new>

void putText(arbor::IPropertyHolder& bag, const wchar_t* key, const std::wstring& text) {
    const bool isStored = bag.setWString(key, text.c_str());
    // The bag answers true also for a text that it had no memory to copy, and stores a null for it.
    if (!isStored || bag.getProperty(key)->getData() == nullptr) throw std::bad_alloc();
}

void putInt(arbor::IPropertyHolder& bag, const wchar_t* key, std::int32_t value) {
    if (!bag.setInt(key, value)) throw std::bad_alloc();
}
