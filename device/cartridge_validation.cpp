#include "device/cartridge_validation.h"

#include "device/ews_intf.h"
#include "device/web_links.h"
#include "platform/process.h"
#include "platform/shell.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "platform/xml_query.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string_view>

namespace {

constexpr char kLoyaltyPath[] = "/dev/qvLoyalty.xml";
constexpr char kVersion[] = "0001";
constexpr char kRegion[] = "CN";
constexpr std::string_view kQuery = "/cgi-bin/jumpstation.py?action=cartridge_validation";
constexpr std::size_t kAddressBytes = 1023;  // the rest of a longer address is cut off
constexpr std::uint32_t kExitCode = 0;

using Field = std::string CartridgeIdentity::*;

struct DeviceField {
    const char* path;
    Field field;
};

// In the order in which the device is asked.
// clang-format off
constexpr DeviceField kDeviceFields[] = {
    {"//cartridge/cartModelInformation", &CartridgeIdentity::cartridgeModel},
    {"//cartridge/cartLife",             &CartridgeIdentity::cartridgeLife},
    {"//cartridge/cartSerialNumber",     &CartridgeIdentity::cartridgeSerial},
    {"//cartridge/cartManfDate",         &CartridgeIdentity::cartridgeDate},
    {"//cartridge/cartManfSignature",    &CartridgeIdentity::cartridgeSignature},
    {"//printerModel",                   &CartridgeIdentity::printerModel},
    {"//printerSerialNumber",            &CartridgeIdentity::printerSerial},
    {"//printerHardwareSignature",       &CartridgeIdentity::printerSignature},
};
// clang-format on

struct AddressField {
    std::string_view key;
    Field field;
};

// In the order that the site reads.
// clang-format off
constexpr AddressField kAddressFields[] = {
    {"&ver=",  &CartridgeIdentity::version},
    {"&cd=",   &CartridgeIdentity::region},
    {"&cmi=",  &CartridgeIdentity::cartridgeModel},
    {"&cl=",   &CartridgeIdentity::cartridgeLife},
    {"&csn=",  &CartridgeIdentity::cartridgeSerial},
    {"&cmd=",  &CartridgeIdentity::cartridgeDate},
    {"&csig=", &CartridgeIdentity::cartridgeSignature},
    {"&pm=",   &CartridgeIdentity::printerModel},
    {"&psn=",  &CartridgeIdentity::printerSerial},
    {"&psig=", &CartridgeIdentity::printerSignature},
};

// A table of our own, because the run-time libraries do not agree which of these are white space.
constexpr struct { char32_t first, last; } kWhiteSpace[] = {
    {0x0009, 0x000D}, {0x0020, 0x0020}, {0x0085, 0x0085}, {0x00A0, 0x00A0}, {0x1680, 0x1680},
    {0x2000, 0x200A}, {0x2028, 0x2029}, {0x202F, 0x202F}, {0x205F, 0x205F}, {0x3000, 0x3000},
};
// clang-format on

bool isWhiteSpace(wchar_t character) {
    const auto value = static_cast<char32_t>(character);
    for (const auto& range : kWhiteSpace) {
        if (value >= range.first && value <= range.last) return true;
    }
    return false;
}

// Each character that stays is narrowed to its low byte and not through the code page, so a letter
// beyond U+00FF does not come out as the byte that the device sent.
std::string withoutWhiteSpace(const std::string& text) {
    std::string kept;
    for (const wchar_t character : platform::widened(text)) {
        if (!isWhiteSpace(character)) {
            kept += static_cast<char>(static_cast<unsigned char>(character & 0xFF));
        }
    }
    return kept;
}

void openAndTrace(const std::string& address) {
    // Equally right after the next: nobody sees which of the two comes first.
    platform::trace("Hyperlink clicked :%s\n", address.c_str());
    platform::openAddress(platform::widened(address).c_str());
}

}  // namespace

CartridgeIdentity readCartridgeIdentity(const std::wstring& portName) {
    std::string page;
    const bool answered = EWSIntf().get_page(portName.c_str(), kLoyaltyPath, page);

    CartridgeIdentity identity;
    identity.version = kVersion;
    identity.region = kRegion;
    if (!answered) return identity;
    for (const DeviceField& row : kDeviceFields) {
        if (!platform::queryXml(page, row.path, identity.*row.field)) (identity.*row.field).clear();
    }
    identity.printerModel = withoutWhiteSpace(identity.printerModel);
    return identity;
}

std::string validationAddress(const CartridgeIdentity& identity) {
    std::string address = platform::narrowed(validationSite());
    address += kQuery;
    for (const AddressField& row : kAddressFields) {
        address += row.key;
        const std::string& value = identity.*row.field;
        address.append(value, 0, value.find('\0'));  // a zero byte would end the whole address
    }
    address.resize(std::min(address.size(), kAddressBytes));
    return address;
}

void validateCartridge(const std::wstring& portName) {
    try {
        openAndTrace(validationAddress(readCartridgeIdentity(portName)));
    } catch (const std::exception& error) {  // no memory; the process is about to end anyway
        platform::trace("TERNA - error: %s", error.what());
    }
    platform::endProcess(kExitCode);
}
