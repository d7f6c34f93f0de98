// What the process does when its framework fails. The test has a framework of its own, because the
// real one cannot be made to fail in these ways.
#include "app/monitor_process.h"

#include "platform/simulated/world.h"
#include "tern/instance_manager.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t kExitCode = 42;

// What the framework does at the next start, and a record of the calls that it has got.
struct Framework {
    bool isMissing = false;
    std::function<void()> whenAGeneratorIsMade = [] {};
    std::vector<platform::NativeHandle> modules;
    std::vector<std::string> created;  // "class name: arguments"
    int runs = 0;
    int alive = 0;
};
Framework framework;

class FrameworkManager : public test::TestManager<> {
public:
    FrameworkManager() { ++framework.alive; }
    ~FrameworkManager() override { --framework.alive; }

    std::unique_ptr<tern::ModuleRecord>* addModule(platform::NativeHandle module) override {
        framework.modules.push_back(module);
        return TestManager::addModule(module);
    }
    bool createInstance(const wchar_t*, const wchar_t*) override { return false; }
    bool createInstance(const char* name, const char* arguments) override {
        framework.created.push_back(std::string(name) + ": " + arguments);
        framework.whenAGeneratorIsMade();
        return false;
    }
    std::uint32_t run() override {
        ++framework.runs;
        return kExitCode;
    }
};

}  // namespace

// These two replace the functions of the framework.
tern::IInstanceManager* tern::NewInstanceManager(const char*, int, const char* const*) {
    return framework.isMissing ? nullptr : new FrameworkManager;
}
void tern::TERN_DeleteInstanceManager(IInstanceManager*& manager) {
    delete manager;
    manager = nullptr;
}

namespace {

using Lines = std::vector<std::string>;

class FailedStartTest : public testing::Test {
protected:
    FailedStartTest() {
        framework = {};
        platform::simulated::world().reset();
        platform::simulated::world().diagnostics.keepTrace();
    }
    ~FailedStartTest() override { platform::simulated::world().reset(); }

    static Lines traced() { return platform::simulated::world().diagnostics.traceLines(); }

    int program = 0;  // its address serves as the handle of the program's module
};

TEST_F(FailedStartTest, TheExitCodeIsWhatTheMainLoopReturns) {
    EXPECT_EQ(runMonitor(&program, "inputPipe=jobs"), kExitCode);

    EXPECT_EQ(framework.runs, 1);
    EXPECT_EQ(framework.created, Lines{"VeloEventGenerator: inputPipe=jobs"});
    EXPECT_EQ(framework.alive, 0);
}

TEST_F(FailedStartTest, TheProgramItselfIsTheOneModuleOfTheFramework) {
    runMonitor(&program, "");

    EXPECT_EQ(framework.modules, std::vector<platform::NativeHandle>{&program});
}

TEST_F(FailedStartTest, WithoutAFrameworkTheProcessEndsWithZero) {
    framework.isMissing = true;

    EXPECT_EQ(runMonitor(&program, "inputPipe=jobs"), 0U);

    EXPECT_EQ(traced(), (Lines{"TERNA - VSM4000 inputPipe=jobs",
                               "TERNA - error: tern::NewInstanceManager() failed",
                               "TERNA - TERN_DeleteInstanceManager"}));
}

TEST_F(FailedStartTest, AnErrorAtTheStartIsTracedAndEndsTheProcessWithZero) {
    framework.whenAGeneratorIsMade = [] { throw std::runtime_error("no generator"); };

    EXPECT_EQ(runMonitor(&program, "inputPipe=jobs"), 0U);

    EXPECT_EQ(traced(),
              (Lines{"TERNA - VSM4000 inputPipe=jobs", "Unable to open Strings.dll",
                     "TERNA - create new VeloEventGenerator", "TERNA - error: no generator",
                     "TERNA - TERN_DeleteInstanceManager"}));
    EXPECT_EQ(framework.runs, 0);
    EXPECT_EQ(framework.alive, 0);
}

TEST_F(FailedStartTest, AnExceptionOfNoKnownKindIsTracedToo) {
    framework.whenAGeneratorIsMade = [] { throw 7; };

    EXPECT_EQ(runMonitor(&program, "inputPipe=jobs"), 0U);

    EXPECT_EQ(traced(),
              (Lines{"TERNA - VSM4000 inputPipe=jobs", "Unable to open Strings.dll",
                     "TERNA - create new VeloEventGenerator", "TERNA - unhandled exception",
                     "TERNA - TERN_DeleteInstanceManager"}));
    EXPECT_EQ(framework.runs, 0);
    EXPECT_EQ(framework.alive, 0);
}

}  // namespace
