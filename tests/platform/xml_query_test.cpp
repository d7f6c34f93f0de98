#include "platform/xml_query.h"

#include "platform/lock.h"
#include "platform/thread.h"

#include <gtest/gtest.h>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// The text that queryXml() finds, or "-" if it returns false; `out` must then be empty.
std::string query(std::string_view document, const char* path) {
    std::string out = "before";
    const bool isFound = platform::queryXml(document, path, out);
    if (isFound) return out;
    EXPECT_EQ(out, "");
    return "-";
}

constexpr std::string_view kPage =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
    "<!-- consumables -->\r\n"
    "<c:Dyn xmlns:c=\"http://example/c\" xmlns:d=\"http://example/d\">\r\n"
    "  <c:Info><d:Label>first</d:Label><d:Number>CF 210 &amp; more</d:Number></c:Info>\r\n"
    "  <c:Info><d:Label>second</d:Label><d:Empty/></c:Info>\r\n"
    "</c:Dyn>";

TEST(XmlQueryTest, PrefixesAreMatchedAsTheyAreWritten) {
    EXPECT_EQ(query(kPage, "//c:Info/d:Number"), "CF 210 & more");
    EXPECT_EQ(query(kPage, "//Info/Number"), "-");
    EXPECT_EQ(query(kPage, "//d:Info/d:Number"), "-");
}

TEST(XmlQueryTest, TheFirstNodeOfThePathIsTaken) {
    EXPECT_EQ(query(kPage, "//c:Info/d:Label"), "first");
    EXPECT_EQ(query(kPage, "//d:Label"), "first");
    EXPECT_EQ(query(kPage, "//c:Dyn/c:Info/d:Label"), "first");
    EXPECT_EQ(query(kPage, "/c:Dyn/c:Info/d:Label"), "first");
}

TEST(XmlQueryTest, AnEmptyNodeIsFound) {
    EXPECT_EQ(query(kPage, "//c:Info/d:Empty"), "");
}

TEST(XmlQueryTest, AMissingNodeIsNotFound) {
    EXPECT_EQ(query(kPage, "//c:Info/d:Missing"), "-");
    EXPECT_EQ(query(kPage, "//c:Dyn/d:Label"), "-");
}

TEST(XmlQueryTest, TheTextHasItsEntitiesResolvedAndItsEdgesTrimmed) {
    EXPECT_EQ(query("<a>&lt;&gt;&quot;&apos;&#65;&#x42;</a>", "//a"), "<>\"'AB");
    EXPECT_EQ(query("<a>\r\n  K 7400  \r\n</a>", "//a"), "K 7400");
    EXPECT_EQ(query("<a><![CDATA[<b>]]></a>", "//a"), "<b>");
    EXPECT_EQ(query("<a>one<!-- two --> three</a>", "//a"), "one three");
}

TEST(XmlQueryTest, TheTextOfANodeHoldsThatOfItsChildren) {
    EXPECT_EQ(query("<a><b>one</b><c>two</c></a>", "//a"), "onetwo");
}

TEST(XmlQueryTest, TheTextIsInTheCodePage) {
    EXPECT_EQ(query("<a>gr&#246;&#223;er</a>", "//a"),
              "gr\xF6\xDF"
              "er");
    EXPECT_EQ(query("<a>\xF6</a>", "//a"), "\xF6");
}

TEST(XmlQueryTest, AMalformedDocumentHasNoNodes) {
    for (const char* const document :
         {"", " ", "no markup", "<a>", "<a></b>", "<a><b></a></b>", "<a/><b/>", "<a>&unknown;</a>",
          "<a x=1/>", "<a x='1' x='2'/>", "<a", "<a>\x01</a>", "<a/>trailing", "leading<a/>",
          "<1/>", "<a x='<'/>", "<a><!-- open</a>", "<a><![CDATA[open</a>", "<a>& </a>"}) {
        EXPECT_EQ(query(document, "//a"), "-") << document;
    }
}

TEST(XmlQueryTest, ADocumentWithATypeDefinitionIsRefused) {
    EXPECT_EQ(query("<!DOCTYPE a><a>1</a>", "//a"), "-");
    EXPECT_EQ(query("<?xml version='1.0'?><!-- --><!DOCTYPE a [<!ELEMENT a ANY>]><a>1</a>", "//a"),
              "-");
    EXPECT_EQ(query("<!DOCTYPE a [<!ENTITY x \"1\">]><a>&x;</a>", "//a"), "-");
    EXPECT_EQ(query("<!DOCTYPE a SYSTEM \"a.dtd\"><a>1</a>", "//a"), "-");
    EXPECT_EQ(query("<a><![CDATA[<!DOCTYPE a>]]><!-- <!DOCTYPE a> --></a>", "//a"), "<!DOCTYPE a>");
}

TEST(XmlQueryTest, EntitiesThatNameEachOtherAreNotExpanded) {
    // Each entity contains the one before ten times, so the text would grow to ten thousand million
    // characters if the parser replaced the entities.
    std::string page = "<!DOCTYPE a [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 10; ++i) {
        page += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int copy = 0; copy < 10; ++copy)
            page += "&e" + std::to_string(i - 1) + ";";
        page += "\">";
    }
    page += "]><a>&e9;</a>";

    EXPECT_EQ(query(page, "//a"), "-");
}

TEST(XmlQueryTest, ADocumentThatNamesAFileGetsNothingOfIt) {
    // A real file in native runs too, because a parser that opens files would find a real one.
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / "contract-marked-file.txt";
    std::ofstream(file) << "the marker of a local file";
    const std::string path = file.generic_string();
    const std::string address = (path.starts_with('/') ? "file://" : "file:///") + path;
    for (const std::string& document :
         {"<!DOCTYPE a [<!ENTITY x SYSTEM \"" + address + "\">]><a>&x;</a>",
          "<a xmlns:i='http://www.w3.org/2001/XInclude'><i:include parse='text' href='" + address +
              "'/></a>"}) {
        EXPECT_EQ(query(document, "//a").find("marker"), std::string::npos) << document;
    }
    std::filesystem::remove(file);
}

struct Asker {
    std::string answer;
    static std::uint32_t run(void* parameter) {
        for (int i = 0; i < 20; ++i) {
            static_cast<Asker*>(parameter)->answer = query(kPage, "//c:Info/d:Number");
        }
        return 0;
    }
};

TEST(XmlQueryTest, AnyThreadMayAsk) {
    Asker askers[2];
    platform::NativeHandle threads[2] = {};
    std::atomic<std::uint32_t> id{0};

    for (int i = 0; i < 2; ++i)
        threads[i] = platform::startThread(&Asker::run, &askers[i], id);
    for (const auto thread : threads) {
        EXPECT_EQ(platform::waitForThread(thread, platform::kNoTimeout), 0U);
        platform::closeThread(thread);
    }

    EXPECT_EQ(askers[0].answer, "CF 210 & more");
    EXPECT_EQ(askers[1].answer, "CF 210 & more");
}

}  // namespace
