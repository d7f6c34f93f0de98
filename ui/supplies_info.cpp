#include "ui/supplies_info.h"

#include "arbor/i_property_holder.h"
#include "arbor/property_text.h"
#include "printer/consumables.h"
#include "strings/string_ids.h"
#include "ui/alert_keys.h"
#include "ui/bag_writing.h"
#include "ui/localized_text.h"
#include "ui/resource_ids.h"
#include "ui/text_format.h"

#include <array>
#include <cstdint>
#include <string>

namespace {

constexpr wchar_t kPagesUnknown[] = L"?";
constexpr wchar_t kPagesNotEstimated[] = L"--";

// The device's own word for a missing value is English: the user reads theirs.
std::wstring shown(const std::wstring& value, void* strings) {
    return value == kNotKnown ? localizedText(strings, IDS_NOT_KNOWN, kFactoryTextUnits) : value;
}

std::wstring filled(void* strings, std::uint32_t id, const std::wstring& value) {
    return formatText(localizedText(strings, id, kFactoryTextUnits), {value}, kFactoryTextUnits);
}

}  // namespace

void fillSuppliesInfo(arbor::IPropertyHolder& description, bool estimateUnknown, SuppliesMode mode,
                      int conditionIcon) {
    void* strings = description.getPointer(alert_key::kStringModule,
                                           description.getPointer(alert_key::kModule, nullptr));
    putInt(description, alert_key::kTemplate, IDD_SUPPLIES_ALERT);
    putInt(description, alert_key::kShowSupplies, 1);
    putInt(description, alert_key::kSuppliesPicture, IDB_CARTRIDGE);

    std::array<wchar_t, kConsumableTextUnits> product{};
    std::array<wchar_t, kConsumableTextUnits> pages{};
    getConsumableInfo(arbor::wideText(description, alert_key::kPrinterName), product.data(),
                      pages.data());
    const std::wstring name = filled(strings, IDS_SUPPLIES_NAME, shown(product.data(), strings));
    putText(description, alert_key::kSuppliesName, name);
    if (mode == SuppliesMode::NameOnly) return;

    putInt(description, alert_key::kConditionPicture, conditionIcon);
    std::wstring remaining = shown(pages.data(), strings);
    if (estimateUnknown) remaining = kPagesNotEstimated;
    if (mode == SuppliesMode::PagesUnknown) remaining = kPagesUnknown;
    putText(description, alert_key::kSuppliesPages,
            filled(strings, IDS_PAGES_REMAINING, remaining));
    putText(description, alert_key::kSuppliesComment,
            localizedText(strings, IDS_PAGES_COMMENT, kFactoryTextUnits));
}
