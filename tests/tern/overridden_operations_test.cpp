// An operation that is made of another virtual operation of the same object must reach the override
// of a derived class. So a derived generator, broker or instance manager can change one operation,
// and the others use the changed one.
#include "arbor/message.h"
#include "arbor/property.h"
#include "arbor/property_holder.h"
#include "tern/component_maker.h"
#include "tern/guid_text.h"
#include "tern/velo_listener.h"
#include "tern/velo_record.h"
#include "tests/support/status_channel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

using arbor::Guid;
using records::kPrinter;
using records::number;
using records::record;
using test::StatusChannel;
using test::TestManager;

namespace {

constexpr Guid kOtherType{0x11111111, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

// Overrides every operation that reads a record with an answer that no record contains.
class AnsweringGenerator : public tern::VeloEventGenerator {
public:
    using VeloEventGenerator::VeloEventGenerator;
    ~AnsweringGenerator() override { endThreadUse(); }

    const Guid* getClassId() const override { return &kOtherType; }
    bool isValidHeader(const tern::VeloHeader&) override { return true; }
    const char* readText() override { return "own text"; }
    tern::VeloWideText readWText() override {
        return {reinterpret_cast<const unsigned char*>(_wideText.data()), _wideText.size() / 2 - 1};
    }
    std::uint32_t readNumber(std::uint32_t) override { return 41; }
    const char* findValue(const char*, const char*) override { return "17"; }
    std::uint32_t reserveBuffer(Buffer& buffer, std::uint32_t capacity,
                                std::uint32_t needed) override {
        ++reservations;
        return VeloEventGenerator::reserveBuffer(buffer, capacity, needed);
    }

    std::atomic<int> reservations{0};

private:
    std::string _wideText = records::wideText(u"own wide text");
};

struct OverriddenGeneratorTest : testing::Test {
    StatusChannel<AnsweringGenerator> channel;

    // The bag of the message that the generator makes of one record.
    arbor::IPropertyHolder& played(std::uint32_t recordClass, std::uint32_t subcode) {
        channel.play({record(recordClass, subcode, number(1) + number(2))});
        messages = channel.messages();
        EXPECT_EQ(messages.size(), 1U);
        return *messages.at(0)->getProperties();
    }

    std::vector<tern::MessageReference> messages;
};

// Counts the messages that pass through post(), enqueue() and publish().
class CountingBroker : public tern::EventBroker {
public:
    using EventBroker::EventBroker;

    bool post(const Guid* type, std::uint32_t code, std::uint32_t flags,
              arbor::PropertyHolder* properties) override {
        ++posts;
        return EventBroker::post(type, code, flags, properties);
    }
    bool enqueue(tern::MessageReference message) override {
        ++enqueued;
        return EventBroker::enqueue(std::move(message));
    }
    void publish(arbor::IMessage* message) override {
        ++published;
        EventBroker::publish(message);
        stop(&kOtherType, 0);
    }

    int posts = 0;
    int enqueued = 0;
    int published = 0;
};

// Records which of its operations the others call.
class RecordingManager : public TestManager<> {
public:
    using AbstractInstanceManager::createInstance;
    using AbstractInstanceManager::createInstanceByGuid;

    tern::ModuleRecord* newModuleRecord(platform::NativeHandle module) override {
        calls += "newModuleRecord ";
        return AbstractInstanceManager::newModuleRecord(module);
    }
    std::int32_t getModuleCount() override {
        calls += "getModuleCount ";
        return AbstractInstanceManager::getModuleCount();
    }
    bool createInstance(const wchar_t* name, const wchar_t* arguments) override {
        calls += "createInstance ";
        return AbstractInstanceManager::createInstance(name, arguments);
    }
    arbor::PropertyHolder* createInstanceByGuid(const Guid* guid,
                                                const wchar_t* arguments) override {
        calls += "createInstanceByGuid ";
        return AbstractInstanceManager::createInstanceByGuid(guid, arguments);
    }
    arbor::IPropertyHolder* applyArguments(std::vector<std::wstring>& arguments,
                                           arbor::IPropertyHolder* holder) override {
        calls += "applyArguments ";
        return AbstractInstanceManager::applyArguments(arguments, holder);
    }
    bool addComponent(arbor::PropertyHolder*) override {
        calls += "addComponent ";
        return false;
    }
    std::uint32_t runLoop() override { return 5; }

    std::string calls;
};

arbor::PropertyHolder* makeBag(const arbor::IPropertyHolder&, tern::IInstanceManager*) {
    return new arbor::PropertyHolder;
}

}  // namespace

TEST_F(OverriddenGeneratorTest, NarrowPrinterNamesAreReadByTheOverride) {
    const auto& bag = played(0, tern::kPrinterNarrow);

    EXPECT_EQ(bag.getString(L"portName", ""), "own text");
    EXPECT_EQ(bag.getString(L"printerName", ""), "own text");
}

TEST_F(OverriddenGeneratorTest, WidePrinterNamesAreReadByTheOverride) {
    const auto& bag = played(0, tern::kPrinterWide);

    EXPECT_EQ(bag.getString(L"portName", ""), "own wide text");
    EXPECT_EQ(bag.getString(L"printerName", ""), "own wide text");
}

TEST_F(OverriddenGeneratorTest, NarrowDocumentStartIsReadByTheOverrides) {
    const auto& bag = played(0, tern::kDocumentStartNarrow);

    EXPECT_EQ(bag.getInt(L"jobID", 0), 41);
    EXPECT_EQ(bag.getString(L"docName", ""), "own text");
}

TEST_F(OverriddenGeneratorTest, WideDocumentStartIsReadByTheOverrides) {
    const auto& bag = played(0, tern::kDocumentStartWide);

    EXPECT_EQ(bag.getInt(L"jobID", 0), 41);
    EXPECT_EQ(bag.getString(L"docName", ""), "own wide text");
}

TEST_F(OverriddenGeneratorTest, DocumentEndIsReadByTheOverride) {
    EXPECT_EQ(played(0, tern::kDocumentEnd).getInt(L"jobID", 0), 41);
}

TEST_F(OverriddenGeneratorTest, JobStatusIsReadByTheOverride) {
    const auto& bag = played(0, tern::kJobStatus);

    EXPECT_EQ(bag.getInt(L"severity", 0), 41);
    EXPECT_EQ(bag.getInt(L"status", 0), 41);
}

TEST_F(OverriddenGeneratorTest, DeviceStatusIsReadByTheOverride) {
    EXPECT_EQ(played(2, tern::kDeviceStatus).getInt(L"status", 0), 41);
}

TEST_F(OverriddenGeneratorTest, CartridgeReportIsSearchedByTheOverride) {
    EXPECT_EQ(played(2, tern::kCartridgeReport).getInt(L"blackSN", 0), 17);
}

TEST_F(OverriddenGeneratorTest, BodyAndOemBlockAreReservedByTheOverride) {
    played(1, 0);

    EXPECT_EQ(channel.generator->reservations, 2);
}

TEST_F(OverriddenGeneratorTest, MessageAndStopCarryTheOverriddenIdentity) {
    played(2, tern::kDeviceStatus);

    EXPECT_EQ(*messages.at(0)->getType(), kOtherType);
    EXPECT_EQ(channel.broker.stoppedBy, &kOtherType);
}

TEST_F(OverriddenGeneratorTest, OverrideMayTakeAnyHeader) {
    channel.play({"XXXX" + record(2, tern::kDeviceStatus, number(1)).substr(4)});

    EXPECT_EQ(channel.messages().size(), 1U);
}

TEST(OverriddenBrokerTest, PostedMessagesGoThroughTheOverrides) {
    TestManager<CountingBroker> manager;
    arbor::PropertyHolder properties;

    EXPECT_TRUE(manager.broker.post(&kOtherType, 1, 0, nullptr));
    EXPECT_TRUE(manager.broker.post(&kOtherType, 2, 0, &properties));
    EXPECT_EQ(manager.broker.enqueued, 2);
    EXPECT_TRUE(manager.broker.postExclusive(&kOtherType, 3, 0, nullptr));
    EXPECT_EQ(manager.broker.posts, 3);
    manager.broker.run();
    EXPECT_EQ(manager.broker.published, 1);
}

TEST(OverriddenManagerTest, ModulesAreMadeAndCountedByTheOverrides) {
    RecordingManager manager;
    int module = 0;
    platform::NativeHandle found = nullptr;

    manager.addModule(&module);
    EXPECT_TRUE(manager.getModule(0, found));

    EXPECT_EQ(manager.calls, "newModuleRecord getModuleCount ");
}

TEST(OverriddenManagerTest, ComponentIsMadeThroughEveryOverride) {
    for (const char* const arguments : {"x=1", static_cast<const char*>(nullptr)}) {
        RecordingManager manager;
        manager.database.set(L"Name", L"GUID",
                             arbor::Property::createOpaque(&kOtherType, sizeof kOtherType));
        manager.database.set(L"Makers", tern::guidText(kOtherType).c_str(),
                             arbor::Property::createPointer(reinterpret_cast<void*>(&makeBag)));

        EXPECT_FALSE(manager.createInstance("Name", arguments));

        EXPECT_EQ(manager.calls,
                  "createInstance createInstanceByGuid applyArguments addComponent ");
    }
}

TEST(OverriddenManagerTest, ComponentByGuidIsMadeByTheWideOverride) {
    for (const char* const arguments : {"x=1", static_cast<const char*>(nullptr)}) {
        RecordingManager manager;

        EXPECT_EQ(manager.createInstanceByGuid(&kOtherType, arguments), nullptr);

        EXPECT_EQ(manager.calls, "createInstanceByGuid ");
    }
}

TEST(OverriddenManagerTest, LoopIsRunByTheOverride) {
    RecordingManager manager;

    EXPECT_EQ(manager.run(), 5U);
}

TEST(OverriddenListenerTest, StatusListenerWritesMessagesOfTheOverriddenIdentity) {
    struct OtherListener : tern::VeloListener {
        using VeloListener::VeloListener;
        const Guid* getClassId() const override { return &kOtherType; }
    };
    contract::PipeServer server(test::newPipeName(), contract::PipeServer::Kind::Byte);
    constexpr std::size_t kPrefixUnits = 9;
    arbor::PropertyHolder parameters;
    parameters.setWString(L"outputPipe", server.path().substr(kPrefixUnits).c_str());
    OtherListener listener(parameters, nullptr);
    arbor::Message message(&kOtherType, 2, 0);

    EXPECT_FALSE(listener.notify(&message));

    EXPECT_EQ(server.received(tern::kVeloHeaderBytes).substr(0, 4), "VELO");
}
