#include "device/cartridge_validation.h"
#include "platform/simulated/world.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/result_notes.h"

#include <cstdint>
#include <cstdlib>
#include <string>

// The ten lines are the ten values. The address must be the text that printing them into a buffer
// of 1,023 bytes gives.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    platform::simulated::world().reset();
    FuzzInput input(data, size);
    CartridgeIdentity identity;
    std::string expected =
        "https://validate.corvane.example/cgi-bin/jumpstation.py?action=cartridge_validation";
    const std::pair<const char*, std::string*> values[] = {
        {"ver", &identity.version},
        {"cd", &identity.region},
        {"cmi", &identity.cartridgeModel},
        {"cl", &identity.cartridgeLife},
        {"csn", &identity.cartridgeSerial},
        {"cmd", &identity.cartridgeDate},
        {"csig", &identity.cartridgeSignature},
        {"pm", &identity.printerModel},
        {"psn", &identity.printerSerial},
        {"psig", &identity.printerSignature},
    };
    for (const auto& [key, value] : values) {
        *value = input.line();
        expected += std::string("&") + key + "=" + value->substr(0, value->find('\0'));
    }

    const std::string address = validationAddress(identity);

    if (address != expected.substr(0, 1023)) std::abort();
    note("address", address);
    return 0;
}
