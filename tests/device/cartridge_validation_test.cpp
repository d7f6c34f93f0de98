#include "device/cartridge_validation.h"

#include "platform/simulated/process_ended.h"
#include "platform/simulated/world.h"
#include "platform/text.h"
#include "tests/support/clean_platform.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using platform::Hive;
using platform::simulated::Call;
using platform::simulated::world;

const std::string kStart =
    "https://validate.corvane.example/cgi-bin/jumpstation.py?action=cartridge_validation";

constexpr char kLoyalty[] =
    "<?xml version=\"1.0\"?><loyalty>"
    "<printerHardwareSignature>HW</printerHardwareSignature>"
    "<printerSerialNumber>P 1</printerSerialNumber>"
    "<printerModel> QV Beamline\tK7400\r\n MFP </printerModel>"
    "<cartridge>"
    "<cartManfSignature>S&amp;G</cartManfSignature><cartManfDate>2026-01</cartManfDate>"
    "<cartSerialNumber>4711</cartSerialNumber><cartLife>55</cartLife>"
    "<cartModelInformation>QV-7400A</cartModelInformation>"
    "</cartridge></loyalty>";

class CartridgeValidationTest : public testing::Test {
protected:
    void SetUp() override {
        cleanPlatform();
        world().device.install();
    }
    void TearDown() override {
        EXPECT_EQ(world().device.openDevices(), 0);
        cleanPlatform();
    }

    static void serve(const std::string& page) {
        world().device.setPage("/dev/qvLoyalty.xml", page);
    }

    static std::string modelOf(const std::string& model) {
        serve("<a><printerModel>" + model + "</printerModel></a>");
        return readCartridgeIdentity(L"USB001").printerModel;
    }

    // Validates a cartridge and returns the exit code with which the process would have ended.
    static std::uint32_t validate() {
        try {
            validateCartridge(L"USB001");
        } catch (const platform::ProcessEnded& end) {
            return end.code;
        }
    }
};

TEST_F(CartridgeValidationTest, EachValueComesFromItsNode) {
    serve(kLoyalty);

    const CartridgeIdentity identity = readCartridgeIdentity(L"USB001");

    EXPECT_EQ(identity.version, "0001");
    EXPECT_EQ(identity.region, "CN");
    EXPECT_EQ(identity.cartridgeModel, "QV-7400A");
    EXPECT_EQ(identity.cartridgeLife, "55");
    EXPECT_EQ(identity.cartridgeSerial, "4711");
    EXPECT_EQ(identity.cartridgeDate, "2026-01");
    EXPECT_EQ(identity.cartridgeSignature, "S&G");
    EXPECT_EQ(identity.printerModel, "QVBeamlineK7400MFP");
    EXPECT_EQ(identity.printerSerial, "P 1");
    EXPECT_EQ(identity.printerSignature, "HW");
    EXPECT_EQ(world().device.openedPorts(), std::vector<std::wstring>{L"USB001"});
}

TEST_F(CartridgeValidationTest, AMissingNodeLeavesItsValueEmpty) {
    serve("<loyalty><cartridge><cartLife>5</cartLife></cartridge></loyalty>");

    const CartridgeIdentity identity = readCartridgeIdentity(L"USB001");

    EXPECT_EQ(identity.cartridgeLife, "5");
    EXPECT_EQ(identity.version, "0001");
    for (const std::string& value :
         {identity.cartridgeModel, identity.cartridgeSerial, identity.cartridgeDate,
          identity.cartridgeSignature, identity.printerModel, identity.printerSerial,
          identity.printerSignature}) {
        EXPECT_EQ(value, "");
    }
}

TEST_F(CartridgeValidationTest, ABrokenPageLeavesEveryValueEmpty) {
    serve("<loyalty><cartridge><cartLife>5</cartLife>");

    EXPECT_EQ(readCartridgeIdentity(L"USB001").cartridgeLife, "");
    EXPECT_EQ(readCartridgeIdentity(L"USB001").region, "CN");
}

TEST_F(CartridgeValidationTest, EachFailedQueryLeavesOnlyItsOwnValueEmpty) {
    serve(kLoyalty);
    std::string CartridgeIdentity::*const inOrder[] = {
        &CartridgeIdentity::cartridgeModel,     &CartridgeIdentity::cartridgeLife,
        &CartridgeIdentity::cartridgeSerial,    &CartridgeIdentity::cartridgeDate,
        &CartridgeIdentity::cartridgeSignature, &CartridgeIdentity::printerModel,
        &CartridgeIdentity::printerSerial,      &CartridgeIdentity::printerSignature};
    for (long nth = 1; nth <= 8; ++nth) {
        world().faults.reset();
        world().faults.add({Call::XmlQuery, nth});

        const CartridgeIdentity identity = readCartridgeIdentity(L"USB001");

        for (long field = 1; field <= 8; ++field) {
            EXPECT_EQ((identity.*inOrder[field - 1]).empty(), field == nth) << nth << field;
        }
    }
}

TEST_F(CartridgeValidationTest, WhiteSpaceOfEveryKindLeavesTheModel) {
    EXPECT_EQ(modelOf("A B\tC\nD\r\nE"), "ABCDE");
    EXPECT_EQ(modelOf("A\xA0"
                      "B"),
              "AB");
    EXPECT_EQ(modelOf("   "), "");
}

TEST_F(CartridgeValidationTest, OtherLettersOfTheModelKeepTheirLowByte) {
    EXPECT_EQ(modelOf("M\xFC\xDF"), "M\xFC\xDF");
    EXPECT_EQ(modelOf("&#8364;"), "\xAC") << "not the byte of the code page, which is \\x80";
}

TEST_F(CartridgeValidationTest, TheAddressHasItsKeysInOrderAndItsValuesAsTheyAre) {
    const CartridgeIdentity identity{"0001", "CN", "a b",  "c&d", "e=f",
                                     "%41",  "\"", "\xFC", "",    "z"};

    EXPECT_EQ(
        validationAddress(identity),
        kStart + "&ver=0001&cd=CN&cmi=a b&cl=c&d&csn=e=f&cmd=%41&csig=\"&pm=\xFC&psn=&psig=z");
}

TEST_F(CartridgeValidationTest, TheAddressIsCutAt1023Bytes) {
    CartridgeIdentity identity;
    identity.printerSignature = std::string(5000, 'x');
    EXPECT_EQ(validationAddress(identity).size(), 1023U);
    EXPECT_EQ(validationAddress(identity).substr(0, kStart.size()), kStart);

    identity.printerSignature.clear();
    const std::size_t rest = 1023 - validationAddress(identity).size();
    identity.printerSignature = std::string(rest, 'x');
    EXPECT_EQ(validationAddress(identity).back(), 'x');
    EXPECT_EQ(validationAddress(identity).size(), 1023U);
    identity.printerSignature += 'y';
    EXPECT_EQ(validationAddress(identity).back(), 'x');
    EXPECT_EQ(validationAddress(identity).size(), 1023U);
}

TEST_F(CartridgeValidationTest, AZeroByteEndsItsValueOnly) {
    CartridgeIdentity identity;
    identity.cartridgeModel = std::string("ab\0cd", 5);
    identity.printerSignature = "end";

    const std::string address = validationAddress(identity);

    EXPECT_NE(address.find("&cmi=ab&cl="), std::string::npos);
    EXPECT_NE(address.find("&psig=end"), std::string::npos);
}

TEST_F(CartridgeValidationTest, TheConfiguredSiteIsUsed) {
    world().registry.setText(Hive::LocalMachine, L"SOFTWARE\\Corvane\\QVBL7400 SM",
                             L"ValidationSite", L"http://check.test/");

    EXPECT_EQ(validationAddress({}).rfind("http://check.test/cgi-bin/jumpstation.py?", 0), 0U);
}

TEST_F(CartridgeValidationTest, TheCheckIsTracedOpenedAndEndsTheProcessWithCode0) {
    serve(kLoyalty);
    const TraceLines trace;

    EXPECT_EQ(validate(), 0U);

    const std::string address =
        kStart +
        "&ver=0001&cd=CN&cmi=QV-7400A&cl=55&csn=4711&cmd=2026-01&csig=S&G&pm=QVBeamlineK7400MFP"
        "&psn=P 1&psig=HW";
    std::wstring opened(address.begin(), address.end());
    opened.replace(opened.find(L"P 1"), 3, L"P%201");
    EXPECT_EQ(world().desktop.addresses(), std::vector<std::wstring>{opened});
    EXPECT_EQ(trace.all(), std::vector<std::string>{"Hyperlink clicked :" + address});
}

TEST_F(CartridgeValidationTest, AQuotationMarkOfTheDeviceDoesNotReachTheShell) {
    serve("<a><printerSerialNumber>1&quot; --option &#10;\"</printerSerialNumber></a>");

    EXPECT_EQ(validate(), 0U);

    const std::vector<std::wstring> opened = world().desktop.addresses();
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_NE(opened[0].find(L"&psn=1%22%20--option%20%0A%22&psig="), std::wstring::npos)
        << platform::narrowed(opened[0]);
}

TEST_F(CartridgeValidationTest, WithoutADeviceTheCheckIsOpenedWithEmptyValues) {
    world().device.reset();

    EXPECT_EQ(validate(), 0U);

    const std::string address = kStart + "&ver=0001&cd=CN&cmi=&cl=&csn=&cmd=&csig=&pm=&psn=&psig=";
    EXPECT_EQ(world().desktop.addresses(),
              std::vector<std::wstring>{std::wstring(address.begin(), address.end())});
    EXPECT_EQ(world().faults.calls(Call::XmlQuery), 0);
}

TEST_F(CartridgeValidationTest, AShellThatRefusesEndsTheProcessToo) {
    serve(kLoyalty);
    world().faults.add({Call::AddressOpen});

    EXPECT_EQ(validate(), 0U);
}

}  // namespace
