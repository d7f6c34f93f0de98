#include "tern/instance_manager.h"

#include "arbor/i_database.h"
#include "arbor/property.h"
#include "arbor/simple_message.h"
#include "platform/process.h"
#include "system.h"
#include "tern/channel_settings.h"
#include "tern/class_ids.h"
#include "tern/guid_text.h"
#include "tests/support/status_channel.h"
#include "tests/support/test_components.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#if !defined(_WIN32)
#include "platform/simulated/process_ended.h"
#endif

using arbor::Guid;
using arbor::IPropertyHolder;
using arbor::PropertyHolder;
using platform::NativeHandle;
using tern::IInstanceManager;
using tern::InstanceManager;

namespace {

constexpr Guid kProbeId{0xABCDEF01, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

NativeHandle moduleNumber(int number) {
    return reinterpret_cast<NativeHandle>(static_cast<std::intptr_t>(number));
}

// The arguments that makeProbe() was last called with, and the component that it returns.
struct Probe {
    int calls = 0;
    void* threadControl = nullptr;
    std::string x;
    std::string flag = "absent";
    bool hasInputPipe = false;
    bool hasPrinterId = false;
    IInstanceManager* owner = nullptr;
    PropertyHolder* component = nullptr;
} probe;

PropertyHolder* makeProbe(const IPropertyHolder& parameters, IInstanceManager* owner) {
    ++probe.calls;
    probe.threadControl = parameters.getPointer(L"threadControl", nullptr);
    probe.x = parameters.getString(L"x", "absent");
    probe.flag = parameters.getString(L"flag", "absent");
    probe.hasInputPipe = parameters.hasProperty(L"inputPipe");
    probe.hasPrinterId = parameters.hasProperty(L"printerid");
    probe.owner = owner;
    return probe.component;
}

struct InstanceManagerTest : testing::Test {
    InstanceManagerTest() {
        probe = Probe{};
        test::setChannel(L"", 0);
        arbor::IDatabase& database = *manager.getDatabase();
        database.set(L"Probe", L"GUID", arbor::Property::createOpaque(&kProbeId, sizeof kProbeId));
        database.set(L"Makers", tern::guidText(kProbeId).c_str(),
                     arbor::Property::createPointer(reinterpret_cast<void*>(&makeProbe)));
    }

    void apply(std::vector<std::wstring> arguments) {
        EXPECT_EQ(manager.applyArguments(arguments, &holder), &holder);
        EXPECT_TRUE(arguments.empty());
    }

    PropertyHolder holder;
    InstanceManager manager{PropertyHolder{}, {}};
};

}  // namespace

TEST_F(InstanceManagerTest, ComponentClassesAreRegisteredByNameAndByGuidText) {
    struct Row {
        const char* name;
        Guid guid;
        const wchar_t* maker;
    };
    const Row rows[] = {
        {"TimerEventGenerator", tern::kTimerEventGeneratorId,
         L"/Makers/{505cd427-e218-463b-ac41e737bd464c9}"},
        {"DebugListener", tern::kDebugListenerId, L"/Makers/{b0d2a23a-fe2d-4a03-aec5c3e2f9bea2e4}"},
        {"VeloEventGenerator", tern::kVeloEventGeneratorId,
         L"/Makers/{4ad54a4f-7906-4c40-bb193b778a08d4c}"},
        {"VeloListener", tern::kVeloListenerId, L"/Makers/{5db8ad6d-4d3c-4f33-bd1dbafb50401e7b}"},
    };
    for (const Row& row : rows) {
        Guid guid;
        manager.getDatabase()->getGuid(guid, row.name);
        EXPECT_EQ(guid, row.guid) << row.name;
        EXPECT_NE(manager.getDatabase()->get(row.maker)->getData(), nullptr) << row.name;
    }
    EXPECT_TRUE(manager.getDatabase()->contains(L"/TimerEventGenerator/GUID"));
}

TEST_F(InstanceManagerTest, DatabaseAndBrokerKnowTheirOwner) {
    EXPECT_EQ(dynamic_cast<tern::Database*>(manager.getDatabase())->getInstanceManager(), &manager);
    EXPECT_EQ(manager.getEventBroker()->getInstanceManager(), &manager);
}

TEST_F(InstanceManagerTest, ArgumentsReachTheMakerAndTheChannelSettings) {
    probe.component = new test::ListenerComponent([](arbor::IMessage&) { return false; });

    EXPECT_TRUE(manager.createInstance("Probe", "inputPipe=abc printerid=7 x=1 flag"));

    EXPECT_EQ(probe.calls, 1);
    EXPECT_EQ(probe.threadControl, static_cast<arbor::IListener*>(manager.getEventBroker()));
    EXPECT_EQ(probe.x, "1");
    EXPECT_EQ(probe.flag, "");
    EXPECT_FALSE(probe.hasInputPipe);
    EXPECT_FALSE(probe.hasPrinterId);
    EXPECT_EQ(probe.owner, &manager);
    EXPECT_STREQ(tern::channelSettings().inputPipe.data(), L"abc");
    EXPECT_EQ(tern::channelSettings().printerId, 7);
    EXPECT_EQ(probe.component->getPointer(L"eventBroker", nullptr), manager.getEventBroker());
}

TEST_F(InstanceManagerTest, ArgumentsMayBeAbsent) {
    EXPECT_FALSE(manager.createInstance("Probe", nullptr));
    EXPECT_FALSE(manager.createInstance(L"Probe", nullptr));
    EXPECT_EQ(manager.createInstanceByGuid(&kProbeId, static_cast<const char*>(nullptr)), nullptr);
    EXPECT_EQ(probe.calls, 3);
}

TEST_F(InstanceManagerTest, UnknownNameAnswersFalseAndCallsNoMaker) {
    EXPECT_FALSE(manager.createInstance("Nobody", "x=1"));
    EXPECT_FALSE(manager.createInstance(L"probe", L"x=1"));
    EXPECT_EQ(probe.calls, 0);
}

TEST_F(InstanceManagerTest, NullGuidUnderAKnownNameAnswersFalse) {
    const Guid zero;
    manager.getDatabase()->set(L"Zero", L"GUID", arbor::Property::createOpaque(&zero, sizeof zero));

    EXPECT_FALSE(manager.createInstance("Zero", ""));
}

TEST_F(InstanceManagerTest, UnknownGuidAndNullMakerGiveNull) {
    const Guid stranger{9, 9, 9, {}};
    EXPECT_EQ(manager.createInstanceByGuid(&stranger, L""), nullptr);

    manager.getDatabase()->set(L"Makers", tern::guidText(kProbeId).c_str(),
                               arbor::Property::createPointer(nullptr));
    EXPECT_EQ(manager.createInstanceByGuid(&kProbeId, L""), nullptr);
    EXPECT_FALSE(manager.createInstance("Probe", ""));
}

TEST_F(InstanceManagerTest, ComponentThatTheBrokerRefusesIsDestroyed) {
    struct Bare : PropertyHolder {
        explicit Bare(bool& gone) : _gone(gone) {}
        ~Bare() override { _gone = true; }
        bool& _gone;
    };
    bool gone = false;
    probe.component = new Bare(gone);

    EXPECT_FALSE(manager.createInstance("Probe", ""));

    EXPECT_TRUE(gone);
}

TEST_F(InstanceManagerTest, ComponentByGuidBelongsToTheCaller) {
    auto owned = std::make_unique<PropertyHolder>();
    probe.component = owned.get();

    EXPECT_EQ(manager.createInstanceByGuid(&kProbeId, "x=2"), owned.get());
    EXPECT_EQ(probe.x, "2");
    EXPECT_FALSE(owned->hasProperty(L"eventBroker"));
}

TEST_F(InstanceManagerTest, SeveralSpacesMakeEmptyPiecesThatAreSkipped) {
    EXPECT_FALSE(manager.createInstance("Probe", "  x=1   flag  "));

    EXPECT_EQ(probe.x, "1");
    EXPECT_EQ(probe.flag, "");
}

TEST_F(InstanceManagerTest, ArgumentIsCutAtItsFirstEqualsSign) {
    apply({L"a=b=c", L"empty=", L"=value"});

    EXPECT_EQ(holder.getString(L"a", ""), "b=c");
    EXPECT_EQ(holder.getString(L"empty", "absent"), "");
    EXPECT_EQ(holder.getString(L"", "absent"), "value");
}

TEST_F(InstanceManagerTest, ChannelKeysAreCaseSensitiveAndNeedAValue) {
    apply({L"inputpipe=a", L"PrinterId=8", L"inputPipe", L"printerid", L""});

    EXPECT_EQ(holder.getString(L"inputpipe", ""), "a");
    EXPECT_EQ(holder.getString(L"PrinterId", ""), "8");
    EXPECT_EQ(holder.getString(L"inputPipe", "absent"), "");
    EXPECT_EQ(holder.getString(L"printerid", "absent"), "");
    EXPECT_STREQ(tern::channelSettings().inputPipe.data(), L"");
    EXPECT_EQ(tern::channelSettings().printerId, 0);
}

TEST_F(InstanceManagerTest, PrinterIdIsReadAsADecimal) {
    apply({L"printerid=-12abc"});
    EXPECT_EQ(tern::channelSettings().printerId, -12);

    apply({L"printerid=none"});
    EXPECT_EQ(tern::channelSettings().printerId, -12);
}

TEST_F(InstanceManagerTest, LongestPipeNameFits) {
    const std::wstring name(250, L'p');  // with "\\\\.\\pipe\\" before it, a path of 259 characters

    apply({L"inputPipe=" + name});

    EXPECT_EQ(tern::channelSettings().inputPipe.data(), name);
}

#if !defined(_WIN32)
TEST_F(InstanceManagerTest, TooLongPipeNameEmptiesTheSettingAndEndsTheProcess) {
    for (const std::size_t length : {251U, 255U, 256U, 1000U}) {
        test::setChannel(L"before", 0);
        const TraceLines trace;
        std::uint32_t exitCode = 0;

        try {
            apply({L"inputPipe=" + std::wstring(length, L'p')});
        } catch (const platform::ProcessEnded& ended) {
            exitCode = ended.code;
        }

        EXPECT_EQ(exitCode, 0xC0000417U);
        EXPECT_STREQ(tern::channelSettings().inputPipe.data(), L"");
        EXPECT_EQ(trace.all(),
                  std::vector<std::string>{"TERNA - inputPipe has " + std::to_string(length) +
                                           " characters, the limit is 250"});
    }
}
#endif

TEST_F(InstanceManagerTest, ModuleIsRecordedOnce) {
    auto* first = manager.addModule(moduleNumber(4));
    EXPECT_EQ((*first)->module, moduleNumber(4));
    EXPECT_EQ(manager.addModule(moduleNumber(4)), first);
    manager.addModule(moduleNumber(8));

    EXPECT_EQ(manager.getModuleCount(), 2);
    NativeHandle module = nullptr;
    EXPECT_TRUE(manager.getModule(0, module));
    EXPECT_EQ(module, moduleNumber(4));
    EXPECT_TRUE(manager.getModule(1, module));
    EXPECT_EQ(module, moduleNumber(8));
}

TEST_F(InstanceManagerTest, ModuleOutsideTheListIsNotFound) {
    manager.addModule(moduleNumber(4));
    NativeHandle module = moduleNumber(99);

    EXPECT_FALSE(manager.getModule(-1, module));
    EXPECT_FALSE(manager.getModule(1, module));
    EXPECT_EQ(module, moduleNumber(99));

    manager.clearModules();
    EXPECT_EQ(manager.getModuleCount(), 0);
    EXPECT_FALSE(manager.getModule(0, module));
}

TEST_F(InstanceManagerTest, EmptiedModuleRecordIsPassedOver) {
    manager.addModule(moduleNumber(4))->reset();
    manager.addModule(moduleNumber(8));
    NativeHandle module = nullptr;
    std::wstring string = L"before";

    EXPECT_FALSE(manager.getModule(0, module));
    EXPECT_TRUE(manager.getModule(1, module));

    EXPECT_EQ(module, moduleNumber(8));
    EXPECT_EQ(manager.loadString(string, 5), L"");
    EXPECT_EQ(manager.findInModules(L"name", L"type", 9), nullptr);
    EXPECT_EQ((*manager.addModule(moduleNumber(8)))->module, moduleNumber(8));
    EXPECT_EQ(manager.getModuleCount(), 2);
}

TEST_F(InstanceManagerTest, NoTextAndNoResourceIsFoundInTheModules) {
    manager.addModule(moduleNumber(4));
    std::wstring string = L"before";
    void* result = &string;

    for (const std::uint32_t id : {0U, 1U, 300U, 0xFFFFFFFFU})
        EXPECT_EQ(&manager.loadString(string, id), &string);
    EXPECT_EQ(string, L"");
    EXPECT_EQ(manager.findInModules(L"name", L"type", 9), nullptr);
    EXPECT_EQ(manager.findInModules(L"name", L"type", 9, result), nullptr);
    EXPECT_EQ(result, nullptr);
    EXPECT_FALSE(manager.findStringInModule(300, moduleNumber(4), string));
    EXPECT_FALSE(manager.findResourceInModule(L"name", L"type", 9, moduleNumber(4), result));
}

TEST(InstanceManagerHooksTest, ModulesAreAskedInOrderUntilOneAnswers) {
    struct Asking : test::TestManager<> {
        bool findStringInModule(std::uint32_t id, NativeHandle module,
                                std::wstring& text) override {
            asked.push_back(module);
            text = L"text " + std::to_wstring(id);
            return module == moduleNumber(8);
        }
        bool findResourceInModule(const wchar_t*, const wchar_t*, std::uint32_t,
                                  NativeHandle module, void*& result) override {
            asked.push_back(module);
            if (module != moduleNumber(8)) return false;
            result = module;
            return true;
        }
        std::vector<NativeHandle> asked;
    } manager;
    for (const int module : {4, 8, 12})
        manager.addModule(moduleNumber(module));
    std::wstring string;

    EXPECT_EQ(manager.loadString(string, 5), L"text 5");
    EXPECT_EQ(manager.findInModules(L"name", L"type", 9), moduleNumber(8));

    EXPECT_EQ(manager.asked, (std::vector<NativeHandle>{moduleNumber(4), moduleNumber(8),
                                                        moduleNumber(4), moduleNumber(8)}));
}

TEST_F(InstanceManagerTest, AddAndRemoveComponentAreTheBrokers) {
    PropertyHolder bare;
    int gone = 0;
    auto* listener = new test::ListenerComponent([](arbor::IMessage&) { return false; });
    listener->onDestruction = [&] { ++gone; };

    EXPECT_FALSE(manager.addComponent(nullptr));
    EXPECT_FALSE(manager.addComponent(&bare));
    EXPECT_TRUE(manager.addComponent(listener));
    EXPECT_TRUE(manager.removeComponent(listener, true));

    EXPECT_EQ(gone, 1);
}

TEST_F(InstanceManagerTest, TurnWithoutAMessageSleepsATenthOfASecond) {
    constexpr std::chrono::milliseconds kAtLeast{90};  // two clocks may differ by one tick
    const auto before = std::chrono::steady_clock::now();

    manager.pumpOnce();

    EXPECT_GE(std::chrono::steady_clock::now() - before, kAtLeast);
}

TEST_F(InstanceManagerTest, TurnWithoutAMessageIsNoLongerThanItMustBe) {
    constexpr std::chrono::milliseconds kAtMost{250};
    constexpr int kTurns = 20;  // a busy machine may wake us late, but not every time
    std::chrono::steady_clock::duration shortest = std::chrono::hours(1);

    for (int turn = 0; turn < kTurns && shortest >= kAtMost; ++turn) {
        const auto before = std::chrono::steady_clock::now();
        manager.pumpOnce();
        shortest = std::min(shortest, std::chrono::steady_clock::now() - before);
    }

    EXPECT_LT(shortest, kAtMost);
}

TEST_F(InstanceManagerTest, QuitMessageDoesNotEndTheRun) {
    bool afterQuit = false;
    contract::postQuit();

    manager.pumpOnce();  // takes the quit message out of the queue
    contract::postMessage([&] {
        afterQuit = true;
        manager.getEventBroker()->stop(nullptr, 0);
    });
    EXPECT_EQ(manager.run(), 0U);

    EXPECT_TRUE(afterQuit);
}

TEST_F(InstanceManagerTest, QuitMessageInTheMiddleOfTheRunIsDropped) {
    bool afterQuit = false;
    contract::postMessage([&] {
        contract::postQuit();
        contract::postMessage([&] {
            afterQuit = true;
            manager.getEventBroker()->stop(nullptr, 0);
        });
    });

    EXPECT_EQ(manager.run(), 0U);

    EXPECT_TRUE(afterQuit);
}
