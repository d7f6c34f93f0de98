#include "ui/validation_texts.h"

#include "strings/string_ids.h"
#include "ui/resource_ids.h"

namespace {

// clang-format off
constexpr ControlText kCheckTexts[] = {
    {IDC_CHECK_HEADING,          IDS_CHECK_HEADING,          TextStyle::Heading, CheckAction::None},
    {IDC_CHECK_EXPLANATION,      IDS_CHECK_EXPLANATION,      TextStyle::Plain,   CheckAction::None},
    {IDC_CHECK_LEARN_MORE,       IDS_CHECK_LEARN_MORE,       TextStyle::Link,    CheckAction::ShowDetails},
    {IDC_CHECK_LEARN_MORE_REST,  IDS_CHECK_LEARN_MORE_REST,  TextStyle::Plain,   CheckAction::None},
    {IDC_CHECK_SUBMIT,           IDS_CHECK_SUBMIT,           TextStyle::Plain,   CheckAction::Submit},
    {IDC_CHECK_DECLINE,          IDS_CHECK_DECLINE,          TextStyle::Plain,   CheckAction::Close},
};

constexpr ControlText kDetailTexts[] = {
    {IDC_DETAILS_TEXT_1,         IDS_DETAILS_ABOUT,          TextStyle::Heading, CheckAction::None},
    {IDC_DETAILS_TEXT_2,         IDS_DETAILS_ABOUT_TEXT,     TextStyle::Plain,   CheckAction::None},
    {IDC_DETAILS_TEXT_3,         IDS_DETAILS_CARTRIDGE,      TextStyle::Heading, CheckAction::None},
    {IDC_DETAILS_TEXT_4,         IDS_DETAILS_CARTRIDGE_TEXT, TextStyle::Plain,   CheckAction::None},
    {IDC_DETAILS_TEXT_5,         IDS_DETAILS_PRINTER,        TextStyle::Heading, CheckAction::None},
    {IDC_DETAILS_TEXT_6,         IDS_DETAILS_PRINTER_TEXT,   TextStyle::Plain,   CheckAction::None},
    {IDC_DETAILS_TEXT_7,         IDS_DETAILS_PRIVACY,        TextStyle::Heading, CheckAction::None},
    {IDC_DETAILS_TEXT_8,         IDS_DETAILS_PRIVACY_TEXT,   TextStyle::Plain,   CheckAction::None},
    {IDC_DETAILS_PRIVACY_LINK,   IDS_DETAILS_PRIVACY_LINK,   TextStyle::Link,    CheckAction::OpenPrivacyPage},
    {IDC_DETAILS_DONE,           IDS_DETAILS_DONE,           TextStyle::Plain,   CheckAction::Close},
};
// clang-format on

}  // namespace

std::span<const ControlText> cartridgeCheckTexts() {
    return kCheckTexts;
}
std::span<const ControlText> cartridgeCheckDetailTexts() {
    return kDetailTexts;
}

CheckAction checkAction(std::span<const ControlText> rows, int control) {
    if (control == IDC_CHECK_CANCEL) return CheckAction::Close;
    for (const ControlText& row : rows) {
        if (row.control == control) return row.action;
    }
    return CheckAction::None;
}
