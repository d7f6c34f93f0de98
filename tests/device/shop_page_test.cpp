#include "device/shop_page.h"

#include "platform/simulated/world.h"
#include "tests/support/clean_platform.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using platform::Folder;
using platform::simulated::Call;
using platform::simulated::Files;
using platform::simulated::world;
using Lines = std::vector<std::string>;

const std::string kInstall = "C:\\Program Files\\QV\\QV Beamline K7400 MFP Series";
const std::string kWork = "C:\\ProgramData\\QV\\QV Beamline K7400 MFP Series";
const std::string kField = "document.stockline.XML_string.value";
const std::string kSuccess = "Success to run HTML page " + kWork + "\\P7400OS.HTM";

class ShopPageTest : public testing::Test {
protected:
    void SetUp() override {
        cleanPlatform();
        installTemplates(kInstall);
        world().device.install();
        serve("<?xml version=\"1.0\"?><supplies>black</supplies>");
    }
    void TearDown() override {
        EXPECT_EQ(world().device.openDevices(), 0);
        cleanPlatform();
    }

    static void installTemplates(const std::string& folder) {
        world().files.put(folder + "\\P7400DEF.css", "body {}\r\n");
        world().files.put(folder + "\\P7400SIG.GIF", std::string("GIF\0\n\xFF", 6));
        world().files.put(folder + "\\P7400OS.HTM",
                          "<html>\r\nform = " + kField + ";\r\n</html>\r\n");
    }
    static void serve(const std::string& document) {
        world().device.setPage("/DevMgmt/ShopForSupplies.xml", document);
    }
    static std::string copied(const std::string& file) {
        return world().files.content(kWork + "\\" + file).value_or("(missing)");
    }

    TraceLines trace;
};

TEST_F(ShopPageTest, TheFilledPageIsOpened) {
    openShopPage(L"USB001");

    EXPECT_EQ(copied("P7400OS.HTM"), "<html>form = '<supplies>black</supplies>';</html>");
    EXPECT_EQ(world().desktop.documents(), Lines{kWork + "\\P7400OS.HTM"});
    EXPECT_EQ(world().device.openedPorts(), std::vector<std::wstring>{L"USB001"});
    EXPECT_EQ(trace.all(), Lines{kSuccess});
}

TEST_F(ShopPageTest, StyleSheetAndPictureAreCopiedByteForByte) {
    world().files.put(kWork + "\\P7400DEF.css", "an older one");

    openShopPage(L"USB001");

    EXPECT_EQ(copied("P7400DEF.css"), "body {}\r\n");
    EXPECT_EQ(copied("P7400SIG.GIF"), std::string("GIF\0\n\xFF", 6));
}

TEST_F(ShopPageTest, TheInstalledTemplateStaysAsItIs) {
    openShopPage(L"USB001");
    openShopPage(L"USB001");

    EXPECT_EQ(world().files.content(kInstall + "\\P7400OS.HTM"),
              "<html>\r\nform = " + kField + ";\r\n</html>\r\n");
    EXPECT_EQ(copied("P7400OS.HTM"), "<html>form = '<supplies>black</supplies>';</html>");
}

TEST_F(ShopPageTest, WithoutAPortNoDeviceIsAsked) {
    openShopPage(L"");

    EXPECT_TRUE(world().device.openedPorts().empty());
    EXPECT_EQ(copied("P7400OS.HTM"), "<html>form = '';</html>");
    EXPECT_EQ(trace.all(), Lines{kSuccess});
}

TEST_F(ShopPageTest, TheFoldersOfTheSystemAreUsed) {
    world().desktop.setFolder(Folder::ProgramFiles, "D:\\Programme");
    world().desktop.setFolder(Folder::CommonApplicationData, "E:\\All");
    installTemplates("D:\\Programme\\QV\\QV Beamline K7400 MFP Series");

    openShopPage(L"USB001");

    EXPECT_EQ(world().desktop.documents(),
              Lines{"E:\\All\\QV\\QV Beamline K7400 MFP Series\\P7400OS.HTM"});
}

TEST_F(ShopPageTest, WithoutTheApplicationDataFolderNothingIsTouched) {
    world().faults.add({Call::FolderLookup, 1});

    openShopPage(L"USB001");

    EXPECT_EQ(trace.all(), Lines{"not get folder of application data."});
    EXPECT_TRUE(world().device.openedPorts().empty());
    EXPECT_TRUE(world().desktop.documents().empty());
}

TEST_F(ShopPageTest, WithoutTheProgramFilesFolderTheUsualOneIsUsed) {
    world().desktop.setFolder(Folder::ProgramFiles, "D:\\Programme");
    world().faults.add({Call::FolderLookup, 2});

    openShopPage(L"USB001");

    EXPECT_EQ(trace.all(), Lines{kSuccess});
}

TEST_F(ShopPageTest, ADeviceThatDoesNotAnswerEndsItBeforeAnythingIsCopied) {
    world().faults.add({Call::DevicePage});

    openShopPage(L"USB001");

    EXPECT_EQ(trace.all(), Lines{"not get shop for supply"});
    EXPECT_EQ(copied("P7400DEF.css"), "(missing)");
    EXPECT_TRUE(world().desktop.documents().empty());
}

TEST_F(ShopPageTest, AFailedCopyEndsItThere) {
    const std::string files[] = {"P7400DEF.css", "P7400SIG.GIF", "P7400OS.HTM"};
    for (long nth = 1; nth <= 3; ++nth) {
        world().reset();
        SetUp();
        world().faults.add({Call::FileCopy, nth});
        trace.forget();

        openShopPage(L"USB001");

        for (long copy = 1; copy <= 3; ++copy) {
            EXPECT_EQ(copied(files[copy - 1]) != "(missing)", copy < nth) << nth << copy;
        }
        EXPECT_EQ(trace.all(), Lines{"not copy template " + kInstall + "\\" + files[nth - 1]});
        EXPECT_TRUE(world().desktop.documents().empty());
    }
}

TEST_F(ShopPageTest, AMissingTemplateEndsIt) {
    world().files.reset();

    openShopPage(L"USB001");

    EXPECT_EQ(trace.all(), Lines{"not copy template " + kInstall + "\\P7400DEF.css"});
    EXPECT_TRUE(world().desktop.documents().empty());
}

TEST_F(ShopPageTest, AReadOnlyTargetEndsIt) {
    world().files.put(kWork + "\\P7400OS.HTM", "older", Files::Access::ReadOnly);

    openShopPage(L"USB001");

    EXPECT_EQ(copied("P7400OS.HTM"), "older");
    EXPECT_EQ(trace.all(), Lines{"not copy template " + kInstall + "\\P7400OS.HTM"});
    EXPECT_TRUE(world().desktop.documents().empty());
}

TEST_F(ShopPageTest, AReadOnlyTemplateIsCopiedButCannotBeFilled) {
    world().files.put(kInstall + "\\P7400OS.HTM", "page", Files::Access::ReadOnly);

    openShopPage(L"USB001");

    EXPECT_EQ(trace.all(), Lines{"not write page " + kWork + "\\P7400OS.HTM"});
    EXPECT_TRUE(world().desktop.documents().empty());
}

TEST_F(ShopPageTest, APageThatCannotBeReadOrWrittenIsNotOpened) {
    world().faults.add({Call::FileRead});
    openShopPage(L"USB001");
    world().faults.reset();
    world().faults.add({Call::FileWrite});
    openShopPage(L"USB001");

    EXPECT_EQ(trace.all(), (Lines{"not read page " + kWork + "\\P7400OS.HTM",
                                  "not write page " + kWork + "\\P7400OS.HTM"}));
    EXPECT_TRUE(world().desktop.documents().empty());
}

TEST_F(ShopPageTest, ABrowserThatDoesNotStartIsTraced) {
    world().faults.add({Call::DocumentOpen});

    openShopPage(L"USB001");

    EXPECT_EQ(trace.all(), Lines{"Failed to run HTML page " + kWork + "\\P7400OS.HTM"});
}

TEST_F(ShopPageTest, APathOf260CharactersIsUsedAndALongerOneIsNot) {
    const std::string subPath = "\\QV\\QV Beamline K7400 MFP Series\\P7400DEF.css";
    const std::string folder = "E:\\" + std::string(260 - 3 - subPath.size(), 'x');
    world().desktop.setFolder(Folder::CommonApplicationData, folder);
    openShopPage(L"USB001");
    EXPECT_EQ(world().desktop.documents().size(), 1U);

    world().desktop.setFolder(Folder::CommonApplicationData, folder + "x");
    openShopPage(L"USB001");
    EXPECT_EQ(world().desktop.documents().size(), 1U);

    world().desktop.setFolder(Folder::CommonApplicationData, std::string(100000, 'x'));
    openShopPage(L"USB001");
    EXPECT_EQ(world().desktop.documents().size(), 1U);
}

TEST_F(ShopPageTest, ATemplatePathOf260CharactersIsUsedAndALongerOneIsNot) {
    const std::string product = "\\QV\\QV Beamline K7400 MFP Series\\";
    const std::size_t longest = 260 - 3 - product.size() - std::string("P7400DEF.css").size();
    for (const std::size_t length : {longest, longest + 1}) {
        const std::string folder = "E:\\" + std::string(length, 'x');
        for (const char* const file : {"P7400DEF.css", "P7400SIG.GIF", "P7400OS.HTM"})
            world().files.put(folder + product + file, "template");
        world().desktop.setFolder(Folder::ProgramFiles, folder);

        openShopPage(L"USB001");

        EXPECT_EQ(world().desktop.documents().size(), 1U) << length;
    }
}

TEST_F(ShopPageTest, BytesAbove127AndZeroBytesPass) {
    world().files.put(kInstall + "\\P7400OS.HTM", std::string("\0\xE4\x80\xFF", 4) + kField);
    serve(std::string("<x>\0\xFC\x9F", 6));

    openShopPage(L"USB001");

    EXPECT_EQ(copied("P7400OS.HTM"), std::string("\0\xE4\x80\xFF'\0\xFC\x9F'", 9));
}

}  // namespace
