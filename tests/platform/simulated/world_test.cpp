#include "platform/simulated/world.h"

#include "platform/dynamic_library.h"
#include "platform/file.h"
#include "platform/message_pump.h"
#include "platform/pipe.h"
#include "platform/registry.h"
#include "platform/resource_text.h"
#include "platform/shell.h"
#include "platform/spooler.h"
#include "platform/trace.h"
#include "platform/utf16.h"

#include <gtest/gtest.h>
#include <array>
#include <string>

namespace {

using platform::Hive;
using platform::simulated::Files;
using platform::simulated::world;

constexpr wchar_t kPath[] = L"\\\\.\\pipe\\status";

class WorldTest : public testing::Test {
protected:
    void SetUp() override { world().reset(); }
    void TearDown() override { world().reset(); }

    std::string read(platform::NativeHandle pipe, std::uint32_t count) {
        std::array<char, 64> buffer{};
        const auto result = platform::readPipe(pipe, buffer.data(), count);
        return result.failed ? "error " + std::to_string(result.error)
                             : std::string(buffer.data(), result.bytes);
    }
};

TEST_F(WorldTest, NoReadReturnsMoreThanItsLimit) {
    world().pipes.feed(L"status", "0123456789");
    world().pipes.limitReads(L"status", 4);
    world().pipes.close(L"status", 233);
    const auto pipe = platform::openPipeForReading(kPath);

    EXPECT_EQ(read(pipe, 64), "0123");
    EXPECT_EQ(world().pipes.unread(L"status"), 6U);
    EXPECT_EQ(read(pipe, 64), "4567");
    EXPECT_EQ(read(pipe, 64), "89");
    EXPECT_EQ(read(pipe, 64), "error 233");
}

TEST_F(WorldTest, AResetLeavesNoReaderWaiting) {
    world().pipes.create(L"status");
    const auto pipe = platform::openPipeForReading(kPath);

    world().reset();

    EXPECT_EQ(read(pipe, 1), "error 6");
}

TEST_F(WorldTest, APipeAfterAResetHasAnotherHandle) {
    world().pipes.create(L"status");
    const auto before = platform::openPipeForReading(kPath);
    world().reset();
    world().pipes.feed(L"status", "x");

    EXPECT_NE(platform::openPipeForReading(kPath), before);
    EXPECT_EQ(read(before, 1), "error 6");
}

TEST_F(WorldTest, EachWriteOfAClientIsKeptApart) {
    world().pipes.create(L"status");
    const auto pipe = platform::openPipeForWriting(kPath);

    EXPECT_TRUE(platform::writePipe(pipe, "one", 3));
    EXPECT_TRUE(platform::writePipe(pipe, "two", 3));

    EXPECT_EQ(world().pipes.writes(L"status"), (std::vector<std::string>{"one", "two"}));
}

TEST_F(WorldTest, RegistryTextsStandInUtf16WithTheirNul) {
    world().registry.setText(Hive::LocalMachine, L"Software\\Test", L"path", L"C:\\x");

    const auto value = world().registry.value(Hive::LocalMachine, L"software\\test", L"PATH");

    ASSERT_TRUE(value);
    EXPECT_EQ(value->type, platform::ValueType::String);
    EXPECT_EQ(value->bytes, std::string("C\0:\0\\\0x\0\0\0", 10));
    EXPECT_EQ(world().registry.text(Hive::LocalMachine, L"Software\\Test", L"path"), L"C:\\x");
}

TEST_F(WorldTest, AnOpenKeyIsCountedUntilItIsClosed) {
    world().registry.create(Hive::CurrentUser, L"Key");
    {
        platform::RegistryKey key;
        ASSERT_EQ(key.openForReading(Hive::CurrentUser, L"Key"), 0U);
        EXPECT_EQ(world().registry.openKeys(), 1);
        ASSERT_EQ(key.openForReading(Hive::CurrentUser, L"Key"), 0U);
        EXPECT_EQ(world().registry.openKeys(), 1);
    }

    EXPECT_EQ(world().registry.openKeys(), 0);
}

TEST_F(WorldTest, PrinterDataBelowAKeyIsApartFromTheDriversData) {
    world().printers.setTextOf(L"K7400", L"\\", L"Printer Driver", L"Driver");
    platform::Printer printer;
    ASSERT_TRUE(printer.open(L"k7400"));
    std::array<char16_t, 16> text{};

    EXPECT_EQ(printer.readDataOf(L"\\", L"Printer Driver", text.data(), sizeof text), 0U);
    EXPECT_EQ(std::u16string(text.data()), u"Driver");
    EXPECT_EQ(printer.readData(L"Printer Driver", text.data(), sizeof text),
              platform::kFileNotFound);
}

TEST_F(WorldTest, AReadOnlyFileIsNeitherWrittenNorCopiedOver) {
    world().files.put("C:\\kept", "kept", Files::Access::ReadOnly);
    world().files.put("C:\\new", "new");

    EXPECT_FALSE(platform::writeFile("C:\\kept", "new"));
    EXPECT_FALSE(platform::copyFile("C:\\new", "C:\\KEPT"));
    EXPECT_EQ(world().files.content("C:\\kept"), "kept");
}

TEST_F(WorldTest, TheCopyOfAReadOnlyFileIsReadOnlyToo) {
    world().files.put("template", "x", Files::Access::ReadOnly);

    EXPECT_TRUE(platform::copyFile("template", "copy"));
    EXPECT_FALSE(platform::writeFile("copy", "y"));
}

TEST_F(WorldTest, TheShellRemembersWhatItOpened) {
    std::uint32_t error = 0;

    EXPECT_TRUE(platform::startProgram(L"C:\\companion.exe", error));
    EXPECT_TRUE(platform::openDocument("C:\\page.htm"));

    EXPECT_EQ(world().desktop.programs(), std::vector<std::wstring>{L"C:\\companion.exe"});
    EXPECT_EQ(world().desktop.documents(), std::vector<std::string>{"C:\\page.htm"});
}

TEST_F(WorldTest, ATraceIsKeptOnlyWhenSomebodyWantsIt) {
    platform::trace("lost");
    world().diagnostics.keepTrace();
    platform::trace("kept %d\n", 1);

    EXPECT_EQ(world().diagnostics.traceLines(), std::vector<std::string>{"kept 1"});
    EXPECT_TRUE(world().diagnostics.hasTraced("kept 1"));
    EXPECT_FALSE(world().diagnostics.hasTraced("lost"));
}

TEST_F(WorldTest, TheDebuggerGetsItsTextsAsTheyAre) {
    platform::debugOutput("text\n");

    EXPECT_EQ(world().diagnostics.debuggerTexts(), std::vector<std::string>{"text\n"});
}

TEST_F(WorldTest, TheClockIsSetByHand) {
    world().time = 12345;

    EXPECT_EQ(platform::now(), 12345);
}

TEST_F(WorldTest, NothingIsLeftAfterAReset) {
    world().device.install();
    world().texts.addModule(L"texts.dll");
    world().messages.post([] {});
    world().time = 1;

    world().reset();

    EXPECT_EQ(platform::DynamicLibrary(L"rtqewsi.dll").handle(), nullptr);
    EXPECT_EQ(platform::openResourceLibrary(L"texts.dll"), nullptr);
    EXPECT_FALSE(platform::isMessageWaiting());
    EXPECT_EQ(platform::now(), platform::simulated::World::kStartTime);
}

TEST(Utf16Test, CharactersBeyondTheFirstPlaneAreTwoUnits) {
    const std::wstring text = L"a\U0001F5A8b";

    EXPECT_EQ(platform::toUtf16(text), u"a\U0001F5A8b");
    EXPECT_EQ(platform::fromUtf16(u"a\U0001F5A8b"), text);
}

TEST(Utf16Test, AUnitWithoutItsPartnerPassesAsItIs) {
    const std::u16string alone{u'a', char16_t{0xD83D}};

    EXPECT_EQ(platform::toUtf16(platform::fromUtf16(alone)), alone);
}

}  // namespace
