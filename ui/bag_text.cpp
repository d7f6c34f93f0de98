#include "ui/bag_text.h"

#include "arbor/i_property_holder.h"
#include "platform/text.h"

std::wstring bagText(const arbor::IPropertyHolder& bag, const wchar_t* key,
                     const wchar_t* defaultText) {
    const arbor::IProperty* property = bag.getProperty(key);
    if (property->isNull()) return defaultText;
    if (property->getType() != arbor::PT_WSTRING) return platform::widened(property->toString());
    // A text that could not be copied when it was stored is there without its letters.
    const auto* text = static_cast<const wchar_t*>(property->getData());
    return text != nullptr ? std::wstring(text) : std::wstring();
}
