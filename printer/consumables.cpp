#include "printer/consumables.h"

#include "device/ews_intf.h"
#include "platform/text.h"
#include "platform/xml_query.h"
#include "printer/cartridge_record.h"
#include "printer/cartridge_store.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <string_view>

namespace {

constexpr char kConfigurationPage[] = "/DevMgmt/ConsumableConfigDyn.xml";
constexpr char kUsagePage[] = "/DevMgmt/ProductUsageDyn.xml";
constexpr char kSerialNumber[] = "//ccdyn:ConsumableInfo/dd:SerialNumber";
constexpr char kProductNumber[] = "//ccdyn:ConsumableInfo/dd:ProductNumber";
constexpr char kPagesRemaining[] =
    "//pudyn:ConsumableSubunit/pudyn:Consumable/dd:EstimatedPagesRemaining";

constexpr int kDecimal = 10;

bool isSpace(char letter) {
    // Equally right with > or with < or with &&: the reader of the document has already trimmed
    // tabs and line breaks.
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

// The number at the start of the text, as strtol reads it on Windows: white space, a sign, digits.
// What follows is ignored, and a number of more than 32 bits becomes the nearest one of 32. Not
// strtol itself, because its long has 64 bits on the systems where the tests run.
std::int32_t leadingNumber(std::string_view text) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int64_t kLeast = std::numeric_limits<std::int32_t>::min();
    auto at = std::find_if_not(text.begin(), text.end(), isSpace);
    const bool negative = at != text.end() && *at == '-';
    if (at != text.end() && (*at == '-' || *at == '+')) ++at;

    std::int64_t magnitude = 0;
    for (; at != text.end() && isDigit(*at); ++at) {
        magnitude = std::min(magnitude * kDecimal + (*at - '0'), -kLeast);
    }
    return static_cast<std::int32_t>(negative ? -magnitude : std::min(magnitude, kMost));
}

// Copies `text` into a buffer of kConsumableTextUnits; a longer text is cut.
void copyText(std::wstring_view text, wchar_t* buffer) {
    const std::size_t units = std::min(text.size(), kConsumableTextUnits - 1);
    std::copy_n(text.begin(), units, buffer);
    buffer[units] = L'\0';
}

void queryText(const std::string& page, const char* path, wchar_t* buffer) {
    std::string text;
    if (buffer == nullptr || !platform::queryXml(page, path, text) || text.empty()) return;
    copyText(platform::widened(text), buffer);
}

}  // namespace

void queryCartridgeSerial(const std::wstring& printerName) {
    EWSIntf device;
    std::string page;
    if (!device.get_page(printerName.c_str(), kConfigurationPage, page)) return;
    std::string text;
    if (!platform::queryXml(page, kSerialNumber, text)) return;
    const std::int32_t serial = leadingNumber(text);
    if (serial == 0) return;  // the device does not tell
    CartridgeRecord record;
    AddCartIfNew(record, static_cast<std::uint32_t>(serial));
}

void getConsumableInfo(const std::wstring& printerName, wchar_t* productNumber,
                       wchar_t* pagesRemaining) {
    if (productNumber != nullptr) copyText(kNotKnown, productNumber);
    if (pagesRemaining != nullptr) copyText(kNotKnown, pagesRemaining);
    if (productNumber == nullptr && pagesRemaining == nullptr) return;

    // An alert is worth more than its supplies lines: without memory they say "Not Known".
    try {
        EWSIntf device;
        std::string configuration;
        std::string usage;
        // Both pages are fetched even when the first fails, and only with both is anything told.
        const bool configured =
            device.get_page(printerName.c_str(), kConfigurationPage, configuration);
        const bool used = device.get_page(printerName.c_str(), kUsagePage, usage);
        if (!configured || !used) return;

        queryText(configuration, kProductNumber, productNumber);
        queryText(usage, kPagesRemaining, pagesRemaining);
    } catch (const std::bad_alloc&) {
        return;
    }
}
