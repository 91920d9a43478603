// XPath and namespaces, and what a source without the nodes gives.

#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "readers/xml/XMLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/readers/xml/read.h"
#include "tests/support/AsWorker.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

std::string joined(const std::string& source, const std::string& xpath,
                   const std::string& namespaces = "") {
    return fileScript(source, {.xpath = xpath, .mode = SHARED_MEMORY, .namespaces = namespaces});
}

constexpr auto DEFAULT_NAMESPACE =
    "<list xmlns='urn:list' xmlns:p='urn:price'><item>a</item><p:item>b</p:item></list>";

TEST(XmlNamespaces, AreNotMetByNamesWithoutAPrefix) {
    EXPECT_EQ(joined(DEFAULT_NAMESPACE, "/list/item"), "");
    EXPECT_EQ(joined(DEFAULT_NAMESPACE, "/list/item", "xmlns='urn:list'"), "");
}

TEST(XmlNamespaces, AreMetByAPrefixDeclaredForThemWhateverTheDocumentCallsIt) {
    EXPECT_EQ(joined(DEFAULT_NAMESPACE, "/l:list/l:item", "xmlns:l='urn:list'"), "a");
    EXPECT_EQ(joined(DEFAULT_NAMESPACE, "/l:list/q:item", "xmlns:l='urn:list' xmlns:q='urn:price'"),
              "b");
    EXPECT_EQ(joined(DEFAULT_NAMESPACE, "/p:list/p:item", "xmlns:p=\"urn:list\""), "a");
}

TEST(XmlNamespaces, CanBePassedOverByLocalNames) {
    EXPECT_EQ(joined(DEFAULT_NAMESPACE, "//*[local-name()='item']"), "a|b");
}

TEST(XmlNamespaces, HoldForTheKeyAndLeaveTheNamesOfFieldsAlone) {
    EXPECT_EQ(fileScript(DEFAULT_NAMESPACE, {.xpath = "/l:list",
                                             .mode = DATA_TABLE,
                                             .key = "l:item",
                                             .namespaces = "xmlns:l='urn:list'"}),
              R"(T[a]={{item="a";p:item="b";};};)");
}

TEST(XmlNamespaces, OfTheDocumentAreNotKnownToTheExpression) {
    EXPECT_EQ(joined(DEFAULT_NAMESPACE, "//p:item").rfind("failed: Error\n\tCode = 0x", 0), 0U);
}

TEST(XmlNamespaces, ThatAreNoDeclarationsFail) {
    EXPECT_EQ(joined("<a/>", "/a", "urn:list").rfind("failed: Error\n\tCode = 0x", 0), 0U);
}

TEST(XmlSelection, IsInDocumentOrder) {
    EXPECT_EQ(joined("<a><b>1</b><c>2</c><b>3</b></a>", "//c | //b"), "1|2|3");
    EXPECT_EQ(joined("<a><b>1</b><c>2</c><b>3</b></a>", "//b[last()]/preceding-sibling::*"), "1|2");
}

TEST(XmlSelection, LooksAtAttributesOfWhatAChildHasChosen) {
    constexpr auto source = "<d><r id='1'><n>a</n></r><r id='2'><n>a</n>b</r></d>";
    EXPECT_EQ(joined(source, "/d/r[n='a'][@id='2']"), "ab");
    EXPECT_EQ(joined(source, "/d/r[n='a'][@id='3']"), "");
}

TEST(XmlSelection, ComparesTheTextOfSectionsToo) {
    EXPECT_EQ(joined("<d><r><n>a<![CDATA[b]]></n></r></d>", "/d/r[n='ab']"), "ab");
}

TEST(XmlSelection, KnowsPredicatesAndFunctions) {
    constexpr auto SOURCE = "<a><b n='1'>x</b><b n='2'>y</b><b n='3'>z</b></a>";
    EXPECT_EQ(joined(SOURCE, "/a/b[@n > 1]"), "y|z");
    EXPECT_EQ(joined(SOURCE, "/a/b[last()]"), "z");
    EXPECT_EQ(joined(SOURCE, "/a/b[contains(., 'y')]/@n"), "2");
}

TEST(XmlSelection, ThatIsInvalidOrNoNodeSetFailsWithTheSystemsReport) {
    for (const char* xpath : {"", "/a[", "count(//a)", "'a'", "unknown()"}) {
        EXPECT_EQ(joined("<a/>", xpath).rfind("failed: Error\n\tCode = 0x", 0), 0U) << xpath;
    }
}

TEST(XmlSelection, OfAKeyThatIsInvalidOrNoNodeSetFailsWithTheSystemsReport) {
    for (const char* key : {"", "b[", "count(b)"}) {
        EXPECT_EQ(fileScript("<a><b/></a>", {.xpath = "/a", .mode = DATA_TABLE, .key = key})
                      .rfind("failed: Error\n\tCode = 0x", 0),
                  0U)
            << key;
    }
}

TEST(XmlSource, ThatIsAUrlGivesTheRowsOfItsBody) {
    EXPECT_EQ(urlScript("<a><b>x</b><b>y</b></a>", {.xpath = "/a/b", .mode = DATA_ARRAY}),
              R"(T[0]={{#text="x";};};T[1]={{#text="y";};};READER_NUM_RECORDS=2;)");
}

constexpr auto WITH_DTD = "<!DOCTYPE a [<!ENTITY e 'x'>]><a><b>&e;</b></a>";

TEST(XmlSource, ThatIsAUrlGivesNoRowsAndNoErrorWhenItsBodyIsNotXml) {
    for (const char* body :
         {"", "404 Not Found", "<html><body><br></body></html>", "<a><b>x</b>"}) {
        for (const TargetMode mode :
             {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
            EXPECT_EQ(urlScript(body, {.xpath = "//*", .mode = mode, .key = "."}), "") << body;
        }
    }
}

TEST(XmlSource, ThatIsAUrlGivesNoRowsAndNoErrorWhenItsBodyHasADtd) {
    EXPECT_EQ(urlScript(WITH_DTD, {.xpath = "//*", .mode = DATA_ARRAY}), "");
}

/// The failure of loading a file, and the parser's reason for it.
struct Refusal {
    std::string error, path, reason;
};

Refusal refusalOf(const std::string& path) {
    const AsWorker worker;
    RequestRecord request;
    request.filename = path;
    request.xpath = "//*";
    FakeClock clock;
    ReaderLogger logger(clock, systemPlatform().textFiles);
    logger.setLevel(-1);
    EndMark endMark;
    const auto connections = systemPlatform().http.keepConnections();
    Refusal refusal;
    refusal.path = path;
    std::string script;
    EXPECT_FALSE(XMLHandler(logger, systemPlatform().xml, *connections, endMark)
                     .Read(request, script, refusal.error));
    EXPECT_EQ(script, "");
    const auto document =
        systemPlatform().xml.createDocument(TextEncoding::UTF8, XmlSource::LOCAL_FILE, endMark);
    EXPECT_FALSE(document->loadFile(path));
    refusal.reason = document->parseErrorReason();
    return refusal;
}

void expectTheParsersReason(const Refusal& refusal) {
    EXPECT_NE(refusal.reason, "");
    EXPECT_EQ(refusal.error,
              "Failed to load DOM from " + refusal.path + ".\n" + refusal.reason + "\n");
}

TEST(XmlSource, ThatIsAFileFailsWithItsNameAndTheParsersReasonWhenItIsNotXml) {
    const TempDirectory directory;
    for (const char* source :
         {"", "404 Not Found", "<html><body><br></body></html>", "<a><b>x</b>"}) {
        SCOPED_TRACE(source);
        expectTheParsersReason(refusalOf(directory.write("bad.xml", source)));
    }
}

TEST(XmlSource, ThatIsAFileFailsTheSameWayWhenItHasADtd) {
    const TempDirectory directory;
    expectTheParsersReason(refusalOf(directory.write("bad.xml", WITH_DTD)));
}

TEST(XmlSource, ThatIsAFileFailsTheSameWayWhenThereIsNone) {
    const TempDirectory directory;
    expectTheParsersReason(refusalOf((directory.path() / "none.xml").string()));
}

}  // namespace
}  // namespace intake
