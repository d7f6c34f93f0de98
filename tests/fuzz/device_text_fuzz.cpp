#include "device/cartridge_validation.h"
#include "platform/simulated/world.h"
#include "printer/media_types.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/result_notes.h"

#include <cstdint>
#include <cstdlib>
#include <string>

// Ten lines: a media name, then the texts of the nodes of the cartridge's page. Whatever these
// texts are, the address that is built from them must fit into its buffer, and it must begin with
// the right host.
namespace {

using platform::simulated::world;

void require(bool holds) {
    if (!holds) std::abort();
}

// A CDATA section, in which no character has a special meaning.
std::string literally(std::string_view text) {
    std::string kept;
    for (const char letter : text) {
        if (letter != '>' &&
            (static_cast<unsigned char>(letter) >= ' ' || letter == '\t' || letter == '\r')) {
            kept += letter;
        }
    }
    return "<![CDATA[" + kept + "]]>";
}

std::string node(const std::string& name, FuzzInput& input) {
    return "<" + name + ">" + literally(input.line()) + "</" + name + ">";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    world().reset();
    FuzzInput input(data, size);
    const int media = TranslateMediaType(std::string(input.line()).c_str());
    require(media >= 301 && media <= 321);

    std::string page = "<loyalty><cartridge>";
    for (const char* const name : {"cartModelInformation", "cartLife", "cartSerialNumber",
                                   "cartManfDate", "cartManfSignature"}) {
        page += node(name, input);
    }
    page += "</cartridge>";
    for (const char* const name :
         {"printerModel", "printerSerialNumber", "printerHardwareSignature"}) {
        page += node(name, input);
    }
    page += "</loyalty>";
    world().device.install();
    world().device.setPage("/dev/qvLoyalty.xml", page);

    const CartridgeIdentity identity = readCartridgeIdentity(L"port");
    // A blank may stay: the byte 0x86 is the letter U+2020, of which the low byte is left.
    require(identity.printerModel.find_first_of("\t\r\n\v\f\xA0") == std::string::npos);
    const std::string address = validationAddress(identity);
    require(address.size() <= 1023);
    require(address.rfind("https://validate.corvane.example/cgi-bin/jumpstation.py?action=", 0) ==
            0);
    require(address.find('\0') == std::string::npos);
    note("media", media);
    note("address", address);
    return 0;
}
