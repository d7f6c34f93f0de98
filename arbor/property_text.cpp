#include "arbor/property_text.h"

#include "arbor/i_property.h"
#include "platform/text.h"

namespace arbor {

std::wstring wideText(const IPropertyHolder& holder, const wchar_t* key,
                      const wchar_t* defaultValue) {
    const IProperty* property = holder.getProperty(key);
    if (property->isNull()) return defaultValue;
    if (property->getType() != PT_WSTRING) return platform::widened(property->toString());
    // A text that could not be copied when it was stored is there with a null pointer.
    const auto* text = static_cast<const wchar_t*>(property->getData());
    return text != nullptr ? text : L"";
}

}  // namespace arbor
