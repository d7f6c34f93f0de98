#include "platform/windows/lazy_library.h"

#include "platform/clock.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "platform/spooler.h"
#include "platform/text.h"
#include "platform/trace.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <string>

namespace {

using platform::LazyFunction;

TEST(LazyFunctionTest, AFunctionIsFoundAtItsFirstUseAndKept) {
    LazyFunction<decltype(&::GetTickCount)> tickCount(L"kernel32.dll", "GetTickCount");

    EXPECT_EQ(reinterpret_cast<void*>(tickCount.get()), reinterpret_cast<void*>(&::GetTickCount));
    EXPECT_EQ(tickCount.get(), tickCount.get());
}

TEST(LazyFunctionTest, AMissingLibraryOrFunctionIsNull) {
    LazyFunction<void (*)()> noLibrary(L"contract-never-made.dll", "Any");
    LazyFunction<void (*)()> noFunction(L"kernel32.dll", "NeverExported");

    EXPECT_EQ(noLibrary.get(), nullptr);
    EXPECT_EQ(noFunction.get(), nullptr);
}

// Records which libraries are loaded before the first test, because the tests load them.
class Startup : public testing::Environment {
public:
    void SetUp() override {
        platform::trace("a line");
        static_cast<void>(platform::now());
        static_cast<void>(platform::widened("text"));
        platform::RegistryKey key;
        static_cast<void>(key.openForReading(platform::Hive::CurrentUser, L"Software"));

        for (const wchar_t* const library :
             {L"shell32.dll", L"ole32.dll", L"oleaut32.dll", L"winspool.drv", L"shlwapi.dll"}) {
            if (::GetModuleHandleW(library) != nullptr) loaded += platform::narrowed(library) + ' ';
        }
    }

    inline static std::string loaded;
};

[[maybe_unused]] testing::Environment* const startup =
    testing::AddGlobalTestEnvironment(new Startup);  // owned by GoogleTest

TEST(StartupTest, TheExpensiveLibrariesAreNotLoadedBeforeTheyAreNeeded) {
    EXPECT_EQ(Startup::loaded, "");

    std::string path;
    EXPECT_TRUE(platform::folderPath(platform::Folder::ProgramFiles, path));
    EXPECT_NE(::GetModuleHandleW(L"shell32.dll"), nullptr);
}

TEST(StartupTest, PreparingTheSpoolerLoadsItsLibrary) {
    platform::prepareSpooler();

    EXPECT_NE(::GetModuleHandleW(L"winspool.drv"), nullptr);
}

}  // namespace
