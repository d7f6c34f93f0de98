#include "device/cartridge_validation.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/support/clean_platform.h"

#include <cstdint>
#include <cstdlib>
#include <string>

// Ten lines are the ten values. The address is what printing them into 1,023 bytes would give.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    cleanPlatform();
    FuzzInput input(data, size);
    CartridgeIdentity identity;
    std::string expected =
        "https://validate.corvane.example/cgi-bin/jumpstation.py?action=cartridge_validation";
    const std::pair<const char*, std::string*> values[] = {
        {"ver", &identity.version},         {"cd", &identity.region},
        {"cmi", &identity.cartridgeModel},  {"cl", &identity.cartridgeLife},
        {"csn", &identity.cartridgeSerial}, {"cmd", &identity.cartridgeDate},
        {"csig", &identity.cartridgeSign},  {"pm", &identity.printerModel},
        {"psn", &identity.printerSerial},   {"psig", &identity.printerSign},
    };
    for (const auto& [key, value] : values) {
        *value = input.line();
        expected += std::string("&") + key + "=" + value->substr(0, value->find('\0'));
    }

    if (validationAddress(identity) != expected.substr(0, 1023)) std::abort();
    return 0;
}
