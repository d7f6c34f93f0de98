#include "platform/registry.h"
#include "platform/simulated/world.h"
#include "printer/cartridge_store.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/result_notes.h"

#include <array>
#include <cstdint>
#include <cstdlib>

// Puts any three values into the registry and then calls the store several times. Whatever the
// values were, the registry must hold a complete record of the current version afterwards.
namespace {

constexpr int kMostCalls = 16;  // more calls are slow and reach no other code
constexpr wchar_t kKey[] = L"Software\\Corvane\\QVBL7400 SM";

void require(bool holds) {
    if (!holds) std::abort();
}

// Reads one byte for the type (0: no such value), two for the size, then the bytes of the value.
void writeValue(const wchar_t* name, FuzzInput& input) {
    const unsigned char type = input.byte();
    if (type == 0) return;
    const std::string_view bytes = input.text(input.number<std::uint16_t>());
    platform::RegistryKey key;
    require(key.createForWriting(platform::Hive::CurrentUser, kKey) == 0);
    require(key.write(name, static_cast<platform::ValueType>(type), bytes.data(),
                      static_cast<std::uint32_t>(bytes.size())) == 0);
}

void requireWholeRecord() {
    platform::RegistryKey key;
    require(key.openForReading(platform::Hive::CurrentUser, kKey) == 0);
    std::array<unsigned char, 280> record;
    std::uint32_t bytes = 280;
    platform::ValueType type = platform::ValueType::None;
    require(key.read(L"CartData", type, record.data(), bytes) == 0);
    require(type == platform::ValueType::Binary && bytes <= 280);
    const std::uint32_t recordBytes = bytes;
    std::uint32_t version = 0;
    bytes = 4;
    require(key.read(L"CartDataVer", type, &version, bytes) == 0);
    require(type == platform::ValueType::Dword && version == 4);
    note("record", std::string_view(reinterpret_cast<const char*>(record.data()), recordBytes));
}

void requireFlag(bool (*occuredBefore)(CartridgeRecord&, std::uint32_t), std::uint32_t serial) {
    CartridgeRecord record;
    const bool before = occuredBefore(record, serial);
    note("before", before ? 1 : 0);
    require(occuredBefore(record, serial));
    require(!before || serial == kNoCartridge || record.find(serial) != CartridgeRecord::npos);
}

void snooze(FuzzInput& input, std::uint32_t serial) {
    CartridgeRecord record;
    const auto hours = input.number<std::int64_t>();
    const auto slot = static_cast<SnoozeSlot>(input.number<std::int8_t>());
    const bool known = GetCartData(record) && record.find(serial) != CartridgeRecord::npos;
    require(SetSnooze(record, serial, hours, slot) == known);
    const bool isSlot = slot >= SnoozeSlot::Low && slot <= SnoozeSlot::Out;
    if (isSlot && known) require(IsSnoozing(serial, slot) == (hours >= 0));
}

void add(std::uint32_t serial) {
    CartridgeRecord record;
    AddCartIfNew(record, serial);
    require(GetCurrCart() == serial);
    require(GetCartData(record) && record.find(serial) != CartridgeRecord::npos);
}

void welcome() {
    note("welcome", takeWelcome() ? 1 : 0);
    require(!takeWelcome());
}

void callStore(FuzzInput& input) {
    const unsigned char operation = input.byte();
    const auto serial = input.number<std::uint32_t>();
    switch (operation % 7) {
        case 0:
            return add(serial);
        case 1:
            return snooze(input, serial);
        case 2:
            return requireFlag(IllegalCartOccured, serial);
        case 3:
            return requireFlag(NonQvCartOccuredBefore, serial);
        case 4:
            return requireFlag(ElableMemErrOccuredBefore, serial);
        case 5:
            return welcome();
        default:
            note("snoozing", IsSnoozing(serial, static_cast<SnoozeSlot>(operation / 7)) ? 1 : 0);
            return;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    platform::simulated::world().reset();
    FuzzInput input(data, size);
    writeValue(L"CurrCart", input);
    writeValue(L"CartDataVer", input);
    writeValue(L"CartData", input);

    CartridgeRecord record;
    GetCartData(record);
    requireWholeRecord();
    for (int call = 0; call < kMostCalls && !input.empty(); ++call) {
        callStore(input);
        GetCartData(record);
        requireWholeRecord();
    }
    return 0;
}
