#include "device/cartridge_validation.h"
#include "device/shop_page.h"
#include "platform/registry.h"
#include "printer/cartridge_store.h"
#include "tests/fault_injection/faults_fixture.h"
#include "tests/support/clean_platform.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>

// The scenes that need nothing of the simulated platform. They run natively and, under Wine, on the
// real registry.
namespace {

using fault_injection::Mode;

using RealPrinterFaultsTest = fault_injection::FaultsTest;

// Size of the stored record, 0 when there is none.
std::uint32_t storedBytes() {
    platform::RegistryKey key;
    if (key.openForReading(platform::Hive::CurrentUser, L"Software\\Corvane\\QVBL7400 SM") != 0) {
        return 0;
    }
    std::array<unsigned char, kCartridgeRecordBytes> record{};
    auto bytes = static_cast<std::uint32_t>(record.size());
    platform::ValueType type = platform::ValueType::None;
    return key.read(L"CartData", type, record.data(), bytes) == 0 ? bytes : 0;
}

TEST_P(RealPrinterFaultsTest, TheStoredRecordStaysWhole) {
    const auto scene = [] {
        cleanPlatform();
        return [] {
            CartridgeRecord record;
            AddCartIfNew(record, 1);
            static_cast<void>(SetSnooze(record, 1, 336, SnoozeSlot::Low));
            static_cast<void>(IllegalCartOccured(record, 2));
            static_cast<void>(takeWelcome());
        };
    };
    const auto check = [](long failed) {
        const std::uint32_t bytes = storedBytes();
        EXPECT_TRUE(bytes == 280U || (failed != 0 && bytes == 0U)) << failed;
        cleanPlatform();
    };

    failEachAllocation(scene, check);
}

TEST_P(RealPrinterFaultsTest, AShopPageIsFilledOrNotMade) {
    std::optional<std::string> page;
    const auto scene = [&page] {
        page.reset();
        return [&page] {
            page = filledShopPage(" \n document.stockline.XML_string.value \r\n",
                                  "<?xml?><order>more than fits into an empty text</order>");
        };
    };
    const auto check = [&page](long failed) {
        EXPECT_EQ(page.has_value(), failed == 0);
        if (page) {
            EXPECT_EQ(*page, "  '<order>more than fits into an empty text</order>' ");
        }
        page.reset();
    };

    failEachAllocation(scene, check, 2);
}

TEST_P(RealPrinterFaultsTest, AnAddressIsWholeOrNotMade) {
    std::optional<std::string> address;
    const auto scene = [&address] {
        address.reset();
        return [&address] {
            CartridgeIdentity identity;
            identity.printerSignature = "a signature that needs memory of its own";
            address = validationAddress(identity);
        };
    };
    const auto check = [&address](long failed) {
        EXPECT_EQ(address.has_value(), failed == 0);
        if (address) {
            EXPECT_NE(address->find("&psig=a signature that needs memory of its own"),
                      std::string::npos);
        }
        address.reset();
    };

    failEachAllocation(scene, check, 4);
}

// Proves that the fault injection finds a leak. It calls operator new, because a compiler may leave
// out a new-expression but not a call.
TEST_P(RealPrinterFaultsTest, ALeakIsFound) {
    void* lost = nullptr;
    const auto scene = [&lost] {
        lost = nullptr;
        return [&lost] {
            lost = ::operator new(1);
            ::operator delete(::operator new(1));
            ::operator delete(lost);
            lost = nullptr;
        };
    };
    std::array<void*, 3> kept{};
    std::size_t count = 0;
    const auto keep = [&lost, &kept, &count](long) {
        if (lost != nullptr && count < kept.size()) kept[count++] = lost;
    };

    const fault_injection::Outcome outcome =
        fault_injection::everyAllocation(GetParam(), scene, keep);

    EXPECT_EQ(outcome.points, 2);
    EXPECT_EQ(outcome.leakedAt, 2);  // the second allocation failed and the first was not freed
    for (void* const block : kept)
        ::operator delete(block);
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, RealPrinterFaultsTest, fault_injection::kBothModes,
                         fault_injection::modeName);

}  // namespace
