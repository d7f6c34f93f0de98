#include "device/cartridge_validation.h"
#include "device/ews_intf.h"
#include "platform/simulated/world.h"
#include "platform/text.h"
#include "platform/xml_query.h"
#include "printer/cartridge_store.h"
#include "printer/consumables.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/result_notes.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

// A device that answers with any pages: every text that the monitor reads from them must fit into
// its buffer. Bit 0 of the first byte puts each page into a well-formed document as the text of its
// nodes, bit 1 asks for the cartridge's identity instead of the consumables. The next bytes are the
// configuration page up to a zero byte, then the usage page.
namespace {

using platform::simulated::world;

constexpr wchar_t kPrinter[] = L"printer";
constexpr wchar_t kUntouched = L'#';
constexpr std::size_t kUnits = 512;

void require(bool holds) {
    if (!holds) std::abort();
}

std::string escaped(std::string_view text) {
    std::string out;
    for (const char letter : text) {
        if (letter == '<') {
            out += "&lt;";
        } else if (letter == '&') {
            out += "&amp;";
        } else if (static_cast<unsigned char>(letter) >= ' ') {
            out += letter;
        }
    }
    return out;
}

std::string configurationWith(const std::string& text) {
    return "<r xmlns:ccdyn=\"c\" xmlns:dd=\"d\"><ccdyn:ConsumableInfo><dd:SerialNumber>" + text +
           "</dd:SerialNumber><dd:ProductNumber>" + text +
           "</dd:ProductNumber></ccdyn:ConsumableInfo></r>";
}

std::string usageWith(const std::string& text) {
    return "<pudyn:ConsumableSubunit xmlns:pudyn=\"p\" xmlns:dd=\"d\"><pudyn:Consumable>"
           "<dd:EstimatedPagesRemaining>" +
           text + "</dd:EstimatedPagesRemaining></pudyn:Consumable></pudyn:ConsumableSubunit>";
}

// The text that a buffer must hold for the node at `path` of `page`, when both pages arrived.
std::wstring expectedText(const std::string& page, const char* path) {
    std::string text;
    if (!platform::queryXml(page, path, text) || text.empty()) return kNotKnown;
    return platform::widened(text).substr(0, kUnits - 1);
}

void requireText(const std::vector<wchar_t>& buffer, const std::wstring& expected) {
    require(buffer.back() == kUntouched);
    require(std::equal(expected.begin(), expected.end(), buffer.begin()));
    require(buffer[expected.size()] == L'\0');
}

void checkConsumables(const std::string& configuration, const std::string& usage) {
    std::vector<wchar_t> product(kUnits + 1, kUntouched);
    std::vector<wchar_t> pages(kUnits + 1, kUntouched);
    getConsumableInfo(kPrinter, product.data(), pages.data());

    const bool both = !configuration.empty() && !usage.empty();
    requireText(
        product,
        both ? expectedText(configuration, "//ccdyn:ConsumableInfo/dd:ProductNumber") : kNotKnown);
    requireText(pages, both ? expectedText(usage,
                                           "//pudyn:ConsumableSubunit/pudyn:Consumable/"
                                           "dd:EstimatedPagesRemaining")
                            : kNotKnown);
    note("product", std::wstring_view(product.data()));
    note("pages", std::wstring_view(pages.data()));
}

void checkSerial(const std::string& configuration) {
    queryCartridgeSerial(kPrinter);
    std::string text;
    const bool told =
        platform::queryXml(configuration, "//ccdyn:ConsumableInfo/dd:SerialNumber", text);
    const long long number =
        told ? std::clamp(std::strtoll(text.c_str(), nullptr, 10), -2147483648LL, 2147483647LL) : 0;
    require(GetCurrCart() == (number == 0 ? kNoCartridge : static_cast<std::uint32_t>(number)));
    note("serial", GetCurrCart());
}

void checkIdentity() {
    const CartridgeIdentity identity = readCartridgeIdentity(kPrinter);
    require(identity.version == "0001");
    for (const std::string* const value :
         {&identity.cartridgeModel, &identity.cartridgeLife, &identity.cartridgeSerial,
          &identity.cartridgeDate, &identity.cartridgeSignature, &identity.printerModel,
          &identity.printerSerial, &identity.printerSignature}) {
        note("identity", *value);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    world().reset();
    FuzzInput input(data, size);
    const unsigned flags = input.byte();
    const bool asText = (flags & 1) != 0;
    const bool identityOnly = (flags & 2) != 0;
    std::string configuration(input.upTo('\0'));
    std::string usage(input.rest());
    if (asText) {
        configuration = configurationWith(escaped(configuration));
        usage = usageWith(escaped(usage));
    }
    world().device.install();
    if (identityOnly) {
        world().device.setPage("/dev/qvLoyalty.xml", configuration);
        checkIdentity();
    } else {
        world().device.setPage("/DevMgmt/ConsumableConfigDyn.xml", configuration);
        world().device.setPage("/DevMgmt/ProductUsageDyn.xml", usage);
        checkConsumables(configuration, usage);
        checkSerial(configuration);
    }
    require(world().device.openDevices() == 0);
    return 0;
}
