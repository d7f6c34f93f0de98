// The message that the generator makes of each kind of record.
#include "tern/velo_event_generator.h"

#include "arbor/abstract_thread.h"
#include "arbor/message.h"
#include "tern/class_ids.h"
#include "tests/support/records.h"
#include "tests/support/status_channel.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

using arbor::IProperty;
using arbor::IPropertyHolder;
using records::number;
using records::record;
using records::text;
using records::wideText;
using test::StatusChannel;

namespace {

// Every property that a record may set.
constexpr const wchar_t* kKeys[] = {L"subcode",       L"portName", L"printerName", L"jobID",
                                    L"docName",       L"severity", L"status",      L"oemMessages",
                                    L"oembufferSize", L"blackSN",  L"mediaType"};

std::set<std::wstring> keysOf(const IPropertyHolder& bag) {
    std::set<std::wstring> keys;
    for (const wchar_t* key : kKeys) {
        if (bag.hasProperty(key)) keys.insert(key);
    }
    return keys;
}

using Keys = std::set<std::wstring>;

// Reads bytes that the test provides instead of a pipe, on the test's thread.
class FedGenerator : public tern::VeloEventGenerator {
public:
    using VeloEventGenerator::VeloEventGenerator;
    ~FedGenerator() override { endThreadUse(); }

    void* readInput(void* destination, std::uint32_t count) override {
        std::memcpy(destination, input.data(), count);
        return destination;
    }
    // Reads until an error ends the reading, and returns the text of that error.
    std::string errorOfReading() {
        try {
            readRecords();
        } catch (const std::domain_error& error) {
            return error.what();
        }
    }

    std::string input;
};

struct VeloEventGeneratorTest : testing::Test {
    // The bag of the only message that the generator makes of the record.
    const IPropertyHolder& bagOf(const std::string& bytes) {
        channel.play({bytes});
        EXPECT_TRUE(channel.finished);
        EXPECT_EQ(channel.messages().size(), 1U);
        return *channel.messages().front()->getProperties();
    }
    static std::uint32_t typeOf(const IPropertyHolder& bag, const wchar_t* key) {
        return bag.getProperty(key)->getType();
    }

    StatusChannel<> channel;
};

}  // namespace

TEST_F(VeloEventGeneratorTest, MessageHasTheClassIdentifierTheRecordClassAndNoFlags) {
    channel.play({record(2, 3, number(5))});

    ASSERT_EQ(channel.messages().size(), 1U);
    const auto message = channel.messages().front();
    EXPECT_EQ(message->getType(), &tern::kVeloEventGeneratorId);
    EXPECT_EQ(message->getCode(), 2U);
    EXPECT_EQ(message->getFlags(), 0U);
    EXPECT_EQ(channel.generator->getClassId(), &tern::kVeloEventGeneratorId);
}

TEST_F(VeloEventGeneratorTest, NarrowPrinterRecord) {
    const auto& bag = bagOf(record(0, 0, text("USB001") + text("Beamline K7400")));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"portName", L"printerName"}));
    EXPECT_EQ(bag.getInt(L"subcode", -1), 0);
    EXPECT_EQ(bag.getString(L"portName", ""), "USB001");
    EXPECT_EQ(bag.getString(L"printerName", ""), "Beamline K7400");
    EXPECT_EQ(typeOf(bag, L"portName"), arbor::PT_STRING);
    EXPECT_EQ(typeOf(bag, L"printerName"), arbor::PT_STRING);
}

TEST_F(VeloEventGeneratorTest, WidePrinterRecord) {
    const auto& bag = bagOf(record(0, 1, wideText(u"USB001") + wideText(u"Gr\u00F6\u00DFe")));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"portName", L"printerName"}));
    EXPECT_EQ(bag.getString(L"portName", ""), "USB001");
    EXPECT_EQ(typeOf(bag, L"portName"), arbor::PT_WSTRING);
    EXPECT_STREQ(static_cast<const wchar_t*>(bag.getProperty(L"printerName")->getData()),
                 L"Gr\u00F6\u00DFe");
}

TEST_F(VeloEventGeneratorTest, NarrowDocumentStart) {
    const auto& bag = bagOf(record(0, 2, number(12) + text("letter.doc")));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"jobID", L"docName"}));
    EXPECT_EQ(bag.getInt(L"jobID", 0), 12);
    EXPECT_EQ(bag.getString(L"docName", ""), "letter.doc");
    EXPECT_EQ(typeOf(bag, L"docName"), arbor::PT_STRING);
}

TEST_F(VeloEventGeneratorTest, WideDocumentStart) {
    const auto& bag = bagOf(record(0, 3, number(0xFFFFFFFF) + wideText(u"\u6587.doc")));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"jobID", L"docName"}));
    EXPECT_EQ(bag.getInt(L"jobID", 0), -1);
    EXPECT_STREQ(static_cast<const wchar_t*>(bag.getProperty(L"docName")->getData()),
                 L"\u6587.doc");
}

TEST_F(VeloEventGeneratorTest, DocumentEnd) {
    const auto& bag = bagOf(record(0, 4, number(12)));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"jobID"}));
    EXPECT_EQ(bag.getInt(L"jobID", 0), 12);
}

TEST_F(VeloEventGeneratorTest, JobStatusCarriesSeverityAndStatus) {
    const auto& bag = bagOf(record(0, 5, std::string("\x03\0\0\0\x6B\x28\0\0", 8)));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"severity", L"status"}));
    EXPECT_EQ(bag.getInt(L"subcode", 0), 5);
    EXPECT_EQ(bag.getInt(L"severity", 0), 3);
    EXPECT_EQ(bag.getInt(L"status", 0), 10347);
    EXPECT_EQ(typeOf(bag, L"status"), arbor::PT_INT);
}

TEST_F(VeloEventGeneratorTest, DeviceStatus) {
    const auto& bag = bagOf(record(2, 3, number(41100)));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"status"}));
    EXPECT_EQ(bag.getInt(L"status", 0), 41100);
}

TEST_F(VeloEventGeneratorTest, CartridgeReport) {
    const auto& bag = bagOf(record(2, 11, text("Model=K\nSerialNumber=1234567\nX=1\n")));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"blackSN"}));
    EXPECT_EQ(bag.getInt(L"blackSN", 0), 1234567);
    EXPECT_EQ(typeOf(bag, L"blackSN"), arbor::PT_INT);
}

TEST_F(VeloEventGeneratorTest, CartridgeReportIsNoMediaReportWhateverFollows) {
    const auto& bag = bagOf(record(2, 11, text("SerialNumber=5\n") + text("DISPLAY=\"A4\"")));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"blackSN"}));
    EXPECT_EQ(bag.getInt(L"blackSN", 0), 5);
}

TEST_F(VeloEventGeneratorTest, CartridgeReportWithoutANumberGivesZero) {
    const auto& bag = bagOf(record(2, 11, text("SerialNumber=none\n")));

    EXPECT_EQ(bag.getInt(L"blackSN", -1), 0);
}

TEST_F(VeloEventGeneratorTest, CartridgeReportWithoutASerialNumberGivesZero) {
    const auto& bag = bagOf(record(2, 11, text("Model=K\n")));

    EXPECT_EQ(bag.getInt(L"blackSN", -1), 0);
}

TEST_F(VeloEventGeneratorTest, MediaReport) {
    const auto& bag = bagOf(record(2, 18, text("DISPLAY=\"A4\"")));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"mediaType"}));
    EXPECT_EQ(bag.getString(L"mediaType", ""), "A4");
    EXPECT_EQ(typeOf(bag, L"mediaType"), arbor::PT_STRING);
}

TEST_F(VeloEventGeneratorTest, MediaReportWithAnEmptyNameIsUnknown) {
    EXPECT_EQ(bagOf(record(2, 18, text("DISPLAY=\"\""))).getString(L"mediaType", ""), "UNKNOWN");
}

TEST_F(VeloEventGeneratorTest, MediaReportWithAFarQuoteSetsNoMediaType) {
    EXPECT_EQ(keysOf(bagOf(record(2, 18, text("DISPLAY           \"A4\"")))), Keys{L"subcode"});
}

TEST_F(VeloEventGeneratorTest, MediaReportWithoutDisplaySetsNoMediaType) {
    EXPECT_EQ(keysOf(bagOf(record(2, 18, text("A4")))), Keys{L"subcode"});
}

TEST_F(VeloEventGeneratorTest, UnknownClassesAndSubcodesGiveTheSubcodeAlone) {
    channel.play({record(0, 6, number(1)), record(2, 4, number(1)), record(3, 5, number(1)),
                  record(0xFFFFFFFF, 0xFFFFFFFE, "")});

    ASSERT_EQ(channel.messages().size(), 4U);
    const std::int32_t subcodes[] = {6, 4, 5, -2};
    for (std::size_t index = 0; index < 4; ++index) {
        const auto& bag = *channel.messages()[index]->getProperties();
        EXPECT_EQ(keysOf(bag), Keys{L"subcode"});
        EXPECT_EQ(bag.getInt(L"subcode", 0), subcodes[index]);
    }
}

TEST_F(VeloEventGeneratorTest, NumbersThatAreNotThereReadAsZero) {
    channel.play({record(0, 2, "abc"), record(0, 3, "abc"), record(0, 4, "abc"),
                  record(0, 5, "abc"), record(2, 3, "abc")});

    ASSERT_EQ(channel.messages().size(), 5U);
    const std::vector<const wchar_t*> numbers[] = {
        {L"jobID"}, {L"jobID"}, {L"jobID"}, {L"severity", L"status"}, {L"status"}};
    for (std::size_t index = 0; index < 5; ++index) {
        const auto& bag = *channel.messages()[index]->getProperties();
        for (const wchar_t* key : numbers[index])
            EXPECT_EQ(bag.getInt(key, -1), 0) << index;
    }
}

TEST_F(VeloEventGeneratorTest, OemRecordHasNoOtherFieldsWhateverItsSubcode) {
    channel.play({record(1, 3, number(7)), record(1, 5, number(7)), record(1, 11, text("x"))});

    ASSERT_EQ(channel.messages().size(), 3U);
    for (const auto& message : channel.messages()) {
        EXPECT_EQ(keysOf(*message->getProperties()),
                  (Keys{L"subcode", L"oemMessages", L"oembufferSize"}));
    }
}

TEST_F(VeloEventGeneratorTest, OemRecordPointsAtTheGeneratorsCopyOfTheBlock) {
    const auto& bag = bagOf(record(1, 9, std::string_view("a\0bc", 4)));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"oemMessages", L"oembufferSize"}));
    EXPECT_EQ(bag.getInt(L"subcode", 0), 9);
    ASSERT_EQ(bag.getInt(L"oembufferSize", 0), 4);
    EXPECT_FALSE(bag.getProperty(L"oemMessages")->isOpaque());
    EXPECT_EQ(std::memcmp(bag.getPointer(L"oemMessages", nullptr), "a\0bc", 4), 0);
}

TEST_F(VeloEventGeneratorTest, OemBlockMayBeOneByte) {
    const auto& bag = bagOf(record(1, 0, "x"));

    ASSERT_EQ(bag.getInt(L"oembufferSize", 0), 1);
    EXPECT_EQ(*static_cast<const char*>(bag.getPointer(L"oemMessages", nullptr)), 'x');
}

TEST_F(VeloEventGeneratorTest, NextOemRecordOverwritesTheBlock) {
    channel.play({record(1, 0, "first"), record(1, 0, "next")});

    ASSERT_EQ(channel.messages().size(), 2U);
    const auto& first = *channel.messages()[0]->getProperties();
    const auto& next = *channel.messages()[1]->getProperties();
    EXPECT_EQ(first.getInt(L"oembufferSize", 0), 5);
    EXPECT_EQ(next.getInt(L"oembufferSize", 0), 4);
    EXPECT_EQ(first.getPointer(L"oemMessages", nullptr), next.getPointer(L"oemMessages", nullptr));
    EXPECT_EQ(std::memcmp(next.getPointer(L"oemMessages", nullptr), "nextt", 5), 0);
}

TEST_F(VeloEventGeneratorTest, OemRecordWithoutABodyIsAnEmptyBlock) {
    const auto& bag = bagOf(record(1, 0, ""));

    EXPECT_TRUE(bag.hasProperty(L"oemMessages"));
    EXPECT_EQ(bag.getPointer(L"oemMessages", &channel), nullptr);
    EXPECT_EQ(bag.getInt(L"oembufferSize", -1), 0);
}

TEST_F(VeloEventGeneratorTest, RecordsWithoutABodyCarryTheSubcodeAlone) {
    const std::vector<std::string> records = {
        record(0, 0, ""), record(0, 1, ""), record(0, 2, ""),  record(0, 3, ""), record(0, 4, ""),
        record(0, 5, ""), record(2, 3, ""), record(2, 11, ""), record(2, 18, "")};

    channel.play(records);

    ASSERT_EQ(channel.messages().size(), records.size());
    for (const auto& message : channel.messages())
        EXPECT_EQ(keysOf(*message->getProperties()), Keys{L"subcode"});
}

TEST_F(VeloEventGeneratorTest, BodyShorterThanItsLayoutReadsAsFarAsItGoes) {
    channel.play({record(0, 2, number(12) + "no terminator"), record(0, 5, number(3) + "ab"),
                  record(0, 0, text("USB001") + "cut"), record(0, 3, number(12) + "odd")});

    ASSERT_EQ(channel.messages().size(), 4U);
    const auto bag = [&](std::size_t index) -> const IPropertyHolder& {
        return *channel.messages()[index]->getProperties();
    };
    EXPECT_EQ(bag(0).getInt(L"jobID", 0), 12);
    EXPECT_EQ(bag(0).getString(L"docName", "?"), "");
    EXPECT_EQ(bag(1).getInt(L"severity", 0), 3);
    EXPECT_EQ(bag(1).getInt(L"status", -1), 0);
    EXPECT_EQ(bag(2).getString(L"portName", ""), "USB001");
    EXPECT_EQ(bag(2).getString(L"printerName", "?"), "");
    EXPECT_EQ(bag(3).getString(L"docName", "?"), "");
}

TEST_F(VeloEventGeneratorTest, BytesBeyondTheLayoutAreIgnored) {
    const auto& bag = bagOf(record(2, 3, number(41100) + "and more"));

    EXPECT_EQ(keysOf(bag), (Keys{L"subcode", L"status"}));
    EXPECT_EQ(bag.getInt(L"status", 0), 41100);
}

TEST_F(VeloEventGeneratorTest, RecordOfAnotherPrinterIsDroppedAndTheNextIsRead) {
    channel.play({record(2, 3, number(1), records::kPrinter + 1), record(2, 3, number(2)),
                  record(1, 0, "block", 0), record(2, 3, number(3))});

    ASSERT_EQ(channel.messages().size(), 2U);
    EXPECT_EQ(channel.messages()[0]->getProperties()->getInt(L"status", 0), 2);
    EXPECT_EQ(channel.messages()[1]->getProperties()->getInt(L"status", 0), 3);
}

TEST_F(VeloEventGeneratorTest, BufferGrowsWithTheNeedAndStopsAtTheLimit) {
    tern::VeloEventGenerator::Buffer buffer;

    EXPECT_EQ(channel.generator->reserveBuffer(buffer, 0, 0), 0U);
    EXPECT_EQ(buffer, nullptr);
    EXPECT_EQ(channel.generator->reserveBuffer(buffer, 0, 10), 10U);
    unsigned char* const first = buffer.get();
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(channel.generator->reserveBuffer(buffer, 10, 4), 4U);
    EXPECT_EQ(buffer.get(), first);
    EXPECT_EQ(channel.generator->reserveBuffer(buffer, 10, 0xFFFFFFFF), 1048576U);
    EXPECT_EQ(channel.generator->reserveBuffer(buffer, 1048576, 1048577), 1048576U);
}

TEST_F(VeloEventGeneratorTest, BeforeTheFirstRecordThereIsNoInput) {
    EXPECT_TRUE(channel.generator->hasInput(0));
    EXPECT_FALSE(channel.generator->hasInput(1));
}

TEST(VeloEventGeneratorErrorTest, GeneratorWithoutAPipeHasNoInputSource) {
    test::TestManager<test::RecordingBroker> manager;
    test::setChannel(L"no such pipe", records::kPrinter);
    FedGenerator generator(arbor::PropertyHolder{}, &manager);

    EXPECT_EQ(generator.errorOfReading(), "[VeloEventGenerator] no input source");
}

TEST(VeloEventGeneratorErrorTest, HeaderWithoutTheMagicIsInvalid) {
    StatusChannel<FedGenerator> channel;
    channel.generator->input = "OLEV" + std::string(16, '\0');

    EXPECT_EQ(channel.generator->errorOfReading(), "[VeloEventGenerator] invalid input header");
}

TEST_F(VeloEventGeneratorTest, OnlyTheMagicMakesAHeaderValid) {
    tern::VeloHeader header;
    header.magic = 0x4F4C4556;
    header.recordClass = header.subcode = header.printerId = header.bodyBytes = 0xFFFFFFFF;
    EXPECT_TRUE(channel.generator->isValidHeader(header));

    header.magic = 0x4F4C4557;
    EXPECT_FALSE(channel.generator->isValidHeader(header));
}
