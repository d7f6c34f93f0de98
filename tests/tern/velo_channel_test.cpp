// Records arrive in pieces of any size, in message mode and in byte mode, too long and too short.
#include "tern/velo_event_generator.h"

#include "tern/class_ids.h"
#include "tests/support/status_channel.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#if !defined(_WIN32)
#include "platform/simulated/world.h"
#endif

using records::header;
using records::number;
using records::record;
using records::text;
using test::StatusChannel;

namespace {

using Kind = StatusChannel<>::Kind;
using Pieces = std::vector<std::string>;

#if !defined(_WIN32)
constexpr std::size_t kPathPrefixUnits = 9;
#endif
constexpr std::uint32_t kBodyLimit = 1048576;

Pieces singleBytes(const std::string& bytes) {
    Pieces pieces;
    for (const char byte : bytes)
        pieces.emplace_back(1, byte);
    return pieces;
}

// Keeps the text of the error that ends the reading.
class ErrorRecordingGenerator : public tern::VeloEventGenerator {
public:
    using VeloEventGenerator::VeloEventGenerator;
    ~ErrorRecordingGenerator() override { endThreadUse(); }

    void* readInput(void* destination, std::uint32_t count) override {
        try {
            return VeloEventGenerator::readInput(destination, count);
        } catch (const std::domain_error& told) {
            error = told.what();
            throw;
        }
    }
    void discardInput(std::uint32_t count) override {
        try {
            VeloEventGenerator::discardInput(count);
        } catch (const std::domain_error& told) {
            error = told.what();
            throw;
        }
    }

    std::string error;
};

class VeloChannelTest : public testing::TestWithParam<Kind> {
protected:
    // Plays the pieces and expects one message for each status, in order.
    void expectStatuses(const Pieces& pieces, const std::vector<std::int32_t>& statuses) {
        channel.play(pieces);

        EXPECT_TRUE(channel.finished);
        std::vector<std::int32_t> heard;
        for (const auto& message : channel.messages())
            heard.push_back(message->getProperties()->getInt(L"status", -1));
        EXPECT_EQ(heard, statuses);
        EXPECT_EQ(channel.broker.stops, 1);
    }

    StatusChannel<ErrorRecordingGenerator> channel{GetParam()};
};

const std::string kFive = record(2, 3, number(5));
const std::string kSix = record(2, 3, number(6));

}  // namespace

INSTANTIATE_TEST_SUITE_P(BothKinds, VeloChannelTest, testing::Values(Kind::Message, Kind::Byte),
                         [](const auto& tested) {
                             return tested.param == Kind::Message ? "MessagePipe" : "BytePipe";
                         });

TEST_P(VeloChannelTest, RecordByteByByte) {
    expectStatuses(singleBytes(kFive + kSix), {5, 6});
}

TEST_P(VeloChannelTest, RecordsCutAtEveryPlace) {
    Pieces pieces;
    std::vector<std::int32_t> statuses;
    const std::string both = kFive + kSix;
    for (std::size_t cut = 0; cut < both.size(); ++cut) {
        pieces.push_back(both.substr(0, cut));
        pieces.push_back(both.substr(cut));
        statuses.insert(statuses.end(), {5, 6});
    }
    expectStatuses(pieces, statuses);
}

TEST_P(VeloChannelTest, EmptyMessagesBetweenAndInsideRecordsAreReadOver) {
    expectStatuses({"", kFive.substr(0, 10), "", "", kFive.substr(10), "", kSix}, {5, 6});
}

TEST_P(VeloChannelTest, RecordOfAnotherPrinterIsDroppedInEveryCut) {
    const std::string foreign = record(2, 3, number(9), records::kPrinter + 1);
    Pieces pieces = singleBytes(foreign);
    pieces.push_back(foreign + kFive);
    expectStatuses(pieces, {5});
}

TEST_P(VeloChannelTest, BodyAtTheLimitIsKeptWhole) {
    const std::string body = number(5) + std::string(kBodyLimit - 4, 'x');
    expectStatuses({header(2, 3, kBodyLimit), body, kSix}, {5, 6});
}

TEST_P(VeloChannelTest, BodyOverTheLimitIsParsedAsFarAsItIsKeptAndTheNextRecordIsRead) {
    const std::string body = number(5) + std::string(kBodyLimit + 5000, 'x');
    expectStatuses({header(2, 3, kBodyLimit + 5004), body, kSix}, {5, 6});
}

TEST_P(VeloChannelTest, TextThatEndsBeyondTheLimitReadsAsEmpty) {
    const std::string name = text(std::string(kBodyLimit, 'x'));
    channel.play({header(0, 2, kBodyLimit + 5), number(12), name, kSix});

    ASSERT_EQ(channel.messages().size(), 2U);
    EXPECT_EQ(channel.messages()[0]->getProperties()->getInt(L"jobID", 0), 12);
    EXPECT_EQ(channel.messages()[0]->getProperties()->getString(L"docName", "?"), "");
}

TEST_P(VeloChannelTest, OemBlockOverTheLimitIsCutAtIt) {
    channel.play({header(1, 0, kBodyLimit + 1), std::string(kBodyLimit + 1, 'x'), kSix});

    ASSERT_EQ(channel.messages().size(), 2U);
    EXPECT_EQ(channel.messages()[0]->getProperties()->getInt(L"oembufferSize", 0), 1048576);
}

TEST_P(VeloChannelTest, HeaderWithoutTheMagicStopsTheBrokerAfterValidRecords) {
    std::string bad = kSix;
    bad[3] = 'X';
    expectStatuses({kFive, bad, kSix}, {5});
    EXPECT_EQ(channel.broker.stoppedBy, &tern::kVeloEventGeneratorId);
    EXPECT_EQ(channel.broker.stopFlags, 0U);
}

TEST_P(VeloChannelTest, NothingIsResynchronisedAfterAShiftedRecord) {
    expectStatuses({"x" + kFive, kSix}, {});
}

TEST_P(VeloChannelTest, WriterThatGoesBetweenRecordsStopsTheBroker) {
    expectStatuses({kFive}, {5});
    EXPECT_EQ(channel.generator->error.rfind(
                  "[VeloEventGenerator::readInput] ReadFile() failed hndl=0x", 0),
              0U)
        << channel.generator->error;
    EXPECT_EQ(channel.generator->error.find("hndl=0x0,"), std::string::npos);
    EXPECT_NE(channel.generator->error.find(", gle=109"), std::string::npos)
        << channel.generator->error;
}

TEST_P(VeloChannelTest, WriterThatClosesThePipeBeforeAnyRecordStopsTheBroker) {
    expectStatuses({}, {});
}

TEST_P(VeloChannelTest, WriterThatGoesInAHeaderStopsTheBroker) {
    expectStatuses({kFive, kSix.substr(0, 19)}, {5});
}

TEST_P(VeloChannelTest, WriterThatGoesInABodyStopsTheBroker) {
    expectStatuses({kFive, kSix.substr(0, 23)}, {5});
}

TEST_P(VeloChannelTest, WriterThatGoesInABodyOverTheLimitStopsTheBroker) {
    expectStatuses({kFive, header(2, 3, kBodyLimit + 5000), std::string(kBodyLimit + 1, 'x')}, {5});
    EXPECT_EQ(channel.generator->error, "[VeloEventGenerator::discardInput] ReadFile() failed");
}

TEST_P(VeloChannelTest, HugeBodyLengthWithoutTheBytesEndsWithTheWriter) {
    expectStatuses({header(2, 3, 0xFFFFFFFF), "few"}, {});
}

TEST_P(VeloChannelTest, GeneratorTellsThatItHasFinished) {
    struct Observer : arbor::IListener {
        bool notify(arbor::IMessage* message) override {
            lastCode = message->getCode();
            return true;
        }
        std::atomic<std::uint32_t> lastCode{0};
    } observer;
    channel.generator->addObserver(&observer);

    channel.play({kFive});

    EXPECT_EQ(observer.lastCode, 3U);
    EXPECT_TRUE(channel.generator->isFinished());
}

TEST_P(VeloChannelTest, ThreadEndsWithCodeZeroWhenTheChannelIsOver) {
    std::uint32_t code = 99;

    channel.play({kFive});

    EXPECT_TRUE(platform::threadExitCode(*channel.generator->getHandle(), code));
    EXPECT_EQ(code, 0U);
}

#if !defined(_WIN32)
TEST_P(VeloChannelTest, PipeIsReadInMessageMode) {
    EXPECT_TRUE(platform::simulated::world().pipes.isInMessageMode(
        channel.server.path().substr(kPathPrefixUnits)));
}
#endif

TEST(VeloChannelStartTest, GeneratorTakesThePipeThatTheSettingsName) {
    StatusChannel<> channel;
    // A pipe takes one client, so no other finds it free.
    EXPECT_FALSE(platform::waitForPipe(channel.server.path().c_str()));
}

TEST(VeloChannelStartTest, NameAmongTheParametersIsNotUsed) {
    test::TestManager<test::RecordingBroker> manager;
    contract::PipeServer server(test::newPipeName());
    test::setChannel(L"no such pipe", records::kPrinter);
    arbor::PropertyHolder parameters;
    parameters.setWString(L"inputPipe", server.path().substr(9).c_str());

    tern::VeloEventGenerator generator(parameters, &manager);

    EXPECT_TRUE(platform::waitForPipe(server.path().c_str()));  // the pipe has no client
}

TEST(VeloChannelStartTest, GeneratorWithoutAPipeAsksToBeStartedAndStopsTheBrokerAtOnce) {
    test::TestManager<test::RecordingBroker> manager;
    test::setChannel(L"no such pipe", records::kPrinter);
    arbor::PropertyHolder parameters;
    parameters.setPointer(L"threadControl", static_cast<arbor::IListener*>(&manager.broker));
    tern::VeloEventGenerator generator(parameters, &manager);
    manager.onPump = [] { platform::sleepFor(1); };

    EXPECT_EQ(manager.broker.run(), 0);  // starts the thread, which stops the loop

    EXPECT_EQ(generator.wait(test::kFailureMs), 0U);
    EXPECT_EQ(manager.broker.stoppedBy, &tern::kVeloEventGeneratorId);
    EXPECT_TRUE(manager.broker.messages().empty());
}

TEST(VeloChannelStartTest, GeneratorCarriesItsThreadInItsBag) {
    StatusChannel<> channel;

    EXPECT_EQ(channel.generator->getPointer(L"thread", nullptr),
              static_cast<arbor::IThread*>(channel.generator.get()));
}
