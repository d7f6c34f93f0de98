#include "platform/simulated/faults.h"

#include "platform/file.h"
#include "platform/lock.h"
#include "platform/pipe.h"
#include "platform/registry.h"
#include "platform/resource_text.h"
#include "platform/shell.h"
#include "platform/simulated/world.h"
#include "platform/spooler.h"
#include "platform/thread.h"
#include "platform/xml_query.h"

#include <gtest/gtest.h>
#include <atomic>
#include <string>

namespace {

using platform::Hive;
using platform::simulated::Call;
using platform::simulated::Fault;
using platform::simulated::world;

class FaultsTest : public testing::Test {
protected:
    void SetUp() override { world().reset(); }
    void TearDown() override { world().reset(); }

    static void fail(Call call, std::uint32_t error = platform::simulated::kGeneralFailure) {
        ASSERT_TRUE(world().faults.add({call, 1, true, error}));
    }
};

TEST_F(FaultsTest, TheNthCallAloneFails) {
    world().faults.add({Call::AddressOpen, 2, false, 5});

    EXPECT_TRUE(platform::openAddress(L"a"));
    EXPECT_FALSE(platform::openAddress(L"b"));
    EXPECT_TRUE(platform::openAddress(L"c"));

    EXPECT_EQ(world().faults.calls(Call::AddressOpen), 3);
    EXPECT_EQ(world().faults.struck(), 1);
    EXPECT_EQ(world().desktop.addresses(), (std::vector<std::wstring>{L"a", L"c"}));
}

TEST_F(FaultsTest, CallsBeforeTheFaultWasAddedDoNotCount) {
    EXPECT_TRUE(platform::openAddress(L"a"));
    world().faults.add({Call::AddressOpen});

    EXPECT_FALSE(platform::openAddress(L"b"));
    EXPECT_TRUE(platform::openAddress(L"c"));
}

TEST_F(FaultsTest, AFaultForEverLastsUntilItIsTakenAway) {
    world().faults.add({Call::AddressOpen, 2, true, 5});

    EXPECT_TRUE(platform::openAddress(L"a"));
    EXPECT_FALSE(platform::openAddress(L"b"));
    EXPECT_FALSE(platform::openAddress(L"c"));
    world().faults.clear();
    EXPECT_TRUE(platform::openAddress(L"d"));
}

TEST_F(FaultsTest, OtherCallsGoOn) {
    fail(Call::DocumentOpen);

    EXPECT_TRUE(platform::openAddress(L"a"));
    EXPECT_FALSE(platform::openDocument("b"));
}

TEST_F(FaultsTest, MoreFaultsThanThereIsRoomForAreRefused) {
    for (std::size_t i = 0; i < platform::simulated::Faults::kFaultLimit; ++i) {
        EXPECT_TRUE(world().faults.add({Call::PipeRead, 1000}));
    }

    EXPECT_FALSE(world().faults.add({Call::PipeRead, 1000}));
}

TEST_F(FaultsTest, RegistryCallsFailWithTheGivenNumber) {
    world().registry.setDword(Hive::CurrentUser, L"Key", L"value", 1);
    constexpr std::uint32_t kBadDatabase = 1009;
    platform::RegistryKey key;
    platform::ValueType type{};
    std::uint32_t number = 0;
    std::uint32_t bytes = sizeof number;

    fail(Call::RegistryOpen, kBadDatabase);
    EXPECT_EQ(key.openForReading(Hive::CurrentUser, L"Key"), kBadDatabase);
    fail(Call::RegistryCreate, kBadDatabase);
    EXPECT_EQ(key.createForWriting(Hive::CurrentUser, L"Key"), kBadDatabase);

    world().faults.clear();
    ASSERT_EQ(key.createForWriting(Hive::CurrentUser, L"Key"), 0U);
    fail(Call::RegistryRead, kBadDatabase);
    EXPECT_EQ(key.read(L"value", type, &number, bytes), kBadDatabase);
    fail(Call::RegistryWrite, kBadDatabase);
    EXPECT_EQ(key.write(L"value", type, &number, bytes), kBadDatabase);
    EXPECT_EQ(world().registry.dword(Hive::CurrentUser, L"Key", L"value"), 1U);
}

TEST_F(FaultsTest, PipeCallsFailWithTheGivenNumber) {
    constexpr std::uint32_t kNotConnected = 233;
    constexpr wchar_t kPath[] = L"\\\\.\\pipe\\status";
    world().pipes.feed(L"status", "record");
    char byte = 0;

    fail(Call::PipeWait);
    EXPECT_FALSE(platform::waitForPipe(kPath));
    fail(Call::PipeOpenForReading);
    EXPECT_EQ(platform::openPipeForReading(kPath), platform::invalidHandle());
    fail(Call::PipeOpenForWriting);
    EXPECT_EQ(platform::openPipeForWriting(kPath), platform::invalidHandle());

    world().faults.clear();
    const auto pipe = platform::openPipeForReading(kPath);
    fail(Call::PipeMode);
    platform::setMessageReadMode(pipe);
    EXPECT_FALSE(world().pipes.isInMessageMode(L"status"));
    fail(Call::PipeRead, kNotConnected);
    const auto read = platform::readPipe(pipe, &byte, 1);
    EXPECT_TRUE(read.failed);
    EXPECT_EQ(read.error, kNotConnected);
    fail(Call::PipeWrite);
    EXPECT_FALSE(platform::writePipe(pipe, &byte, 1));
}

TEST_F(FaultsTest, SpoolerCallsFail) {
    world().printers.setDword(L"K7400", L"Status", 1);
    platform::Printer printer;
    std::uint32_t status = 0;
    ASSERT_TRUE(printer.open(L"K7400"));

    fail(Call::PrinterDataRead, platform::simulated::kAccessDenied);
    EXPECT_EQ(printer.readData(L"Status", &status, sizeof status),
              platform::simulated::kAccessDenied);
    fail(Call::PrinterOpen);
    EXPECT_FALSE(printer.open(L"K7400"));
    EXPECT_EQ(world().printers.openPrinters(), 0);
}

TEST_F(FaultsTest, ShellCallsFail) {
    std::uint32_t error = 0;
    std::string path = "before";

    fail(Call::ProgramStart, platform::kFileNotFound);
    EXPECT_FALSE(platform::startProgram(L"program", error));
    EXPECT_EQ(error, platform::kFileNotFound);
    fail(Call::FolderLookup);
    EXPECT_FALSE(platform::folderPath(platform::Folder::ProgramFiles, path));
    EXPECT_EQ(path, "before");
    EXPECT_TRUE(world().desktop.programs().empty());
}

TEST_F(FaultsTest, FileCallsFail) {
    world().files.put("a", "content");
    std::string bytes = "before";

    fail(Call::FileRead);
    EXPECT_FALSE(platform::readFile("a", bytes));
    EXPECT_EQ(bytes, "before");
    fail(Call::FileWrite);
    EXPECT_FALSE(platform::writeFile("a", "new"));
    fail(Call::FileCopy);
    EXPECT_FALSE(platform::copyFile("a", "b"));
    EXPECT_EQ(world().files.content("a"), "content");
    EXPECT_FALSE(world().files.content("b"));
}

TEST_F(FaultsTest, TextAndLanguageCallsFail) {
    const auto library = world().texts.addModule(L"texts.dll");
    world().texts.add(library, 0x0409, 300, L"Ready");
    world().texts.setUserLanguage(0x0407);
    std::wstring text;

    fail(Call::TextLookup);
    EXPECT_FALSE(platform::resourceText(library, 300, 0x0409, text));
    fail(Call::TextProbe);
    EXPECT_FALSE(platform::hasTexts(library, 300, 0x0409));
    world().texts.setUserLocale(L"de-DE");
    fail(Call::PreferredLanguages);
    EXPECT_EQ(platform::preferredLanguages(), std::vector<std::wstring>{L"de-DE"});
    fail(Call::InterfaceLanguage);
    EXPECT_EQ(platform::userInterfaceLanguage(), 0x0407) << "the user's own stands in";
    fail(Call::SystemVersion);
    EXPECT_FALSE(platform::systemVersionKnown());
    fail(Call::ResourceLibraryOpen);
    EXPECT_EQ(platform::openResourceLibrary(L"texts.dll"), nullptr);
}

TEST_F(FaultsTest, AFailedQueryLeavesItsTextEmpty) {
    std::string text = "before";

    fail(Call::XmlQuery);

    EXPECT_FALSE(platform::queryXml("<a>1</a>", "//a", text));
    EXPECT_EQ(text, "");
}

#ifndef _WIN32  // on Windows these tests link the real threads and locks, which do not fail

TEST_F(FaultsTest, AMutexThatCannotBeCreatedDoesNothing) {
    fail(Call::MutexCreation);
    const int before = world().openMutexes;

    platform::KernelMutex mutex;
    mutex.lock(platform::kNoTimeout);
    mutex.unlock();
    mutex.unlock();

    EXPECT_EQ(world().openMutexes, before);
}

std::uint32_t returnSeven(void*) {
    return 7;
}

TEST_F(FaultsTest, ThreadCallsFail) {
    std::atomic<std::uint32_t> id{0};
    std::uint32_t code = 0;
    const auto thread = platform::startThread(&returnSeven, nullptr, id);
    ASSERT_NE(thread, nullptr);

    fail(Call::ThreadExitCode);
    EXPECT_FALSE(platform::threadExitCode(thread, code));
    fail(Call::ThreadWait);
    EXPECT_EQ(platform::waitForThread(thread, 0), 0xFFFFFFFF);
    fail(Call::ThreadStart);
    std::atomic<std::uint32_t> untouched{3};
    EXPECT_EQ(platform::startThread(&returnSeven, nullptr, untouched), nullptr);
    EXPECT_EQ(untouched.load(), 3U);

    world().faults.clear();
    EXPECT_EQ(platform::waitForThread(thread, platform::kNoTimeout), 0U);
    platform::closeThread(thread);
    EXPECT_EQ(world().openThreads, 0);
}

#endif

}  // namespace
