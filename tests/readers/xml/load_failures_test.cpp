// What becomes of a load when one of its steps fails.

#include "tests/readers/xml/XMLHandlerFixture.h"

namespace intake {
namespace {

constexpr auto URL = "http://feeds.example/a.xml?day=1";

using XmlLoadFailure = XMLHandlerFixture;

TEST_F(XmlLoadFailure, ADocumentThatCannotBeMadeIsReportedForAFile) {
    xml_.failAt("createDocument");
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "Failed to instantiate an XML DOM.\n" + FakeXml::failureReport());
    EXPECT_EQ(xml_.calls(), "createDocument UTF-8 for a file\n");
}

TEST_F(XmlLoadFailure, ARequestThatCannotBeMadeIsReportedForAUrl) {
    request_.filename = URL;
    xml_.failAt("createRequest");
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "Failed to instantiate an XML DOM.\n" + FakeXml::failureReport());
    EXPECT_EQ(xml_.calls(), "createRequest\n");
}

TEST_F(XmlLoadFailure, ADocumentThatCannotBeMadeIsReportedForAUrl) {
    request_.filename = URL;
    xml_.failAt("createDocument");
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "Failed to instantiate an XML DOM.\n" + FakeXml::failureReport());
    EXPECT_EQ(xml_.calls(),
              "createRequest\n"
              "createDocument UTF-8 for a response\n"
              "release request\n");
}

TEST_F(XmlLoadFailure, AFileThatDoesNotLoadIsReportedWithTheParsersReason) {
    xml_.unreadable = "A name was started with an invalid character.";
    EXPECT_FALSE(read());
    EXPECT_EQ(error_,
              "Failed to load DOM from fixtures.xml.\n"
              "A name was started with an invalid character.\n");
    EXPECT_EQ(xml_.calls(),
              "createDocument UTF-8 for a file\n"
              "loadFile fixtures.xml\n"
              "release document\n");
}

TEST_F(XmlLoadFailure, AUrlThatCannotBeOpenedIsReportedWithTheUrlAsAskedFor) {
    request_.filename = "http://feeds.example/a.xml";
    request_.avoidCache = true;
    xml_.failAt("open");
    EXPECT_FALSE(read());
    const size_t start = xml_.calls().find("http://");
    const std::string asked = xml_.calls().substr(start, xml_.calls().find(" -", start) - start);
    EXPECT_EQ(asked.rfind("http://feeds.example/a.xml?q=", 0), 0U) << asked;
    EXPECT_EQ(error_, "Failed to load DOM from " + asked + ".\n" + FakeXml::failureReport());
}

TEST_F(XmlLoadFailure, AUrlThatCannotBeOpenedEndsTheLoad) {
    request_.filename = URL;
    xml_.failAt("open");
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "Failed to load DOM from http://feeds.example/a.xml?day=1.\n" +
                          FakeXml::failureReport());
    EXPECT_EQ(xml_.calls(),
              "createRequest\n"
              "createDocument UTF-8 for a response\n"
              "open http://feeds.example/a.xml?day=1 - -\n"
              "release request\n"
              "release document\n");
}

TEST_F(XmlLoadFailure, AStepOfAUrlThatFailsInItselfIsThrownAndReleasesEverything) {
    request_.filename = URL;
    request_.avoidCache = true;
    for (const char* step : {"setHeader", "send", "loadInto"}) {
        FakeXml xml;
        xml.failAt(step);
        XMLHandler handler(logger_, xml, connections_, endMark_);
        EXPECT_THROW(handler.Read(request_, script_, error_), PlatformError) << step;
        EXPECT_TRUE(xml.calls().ends_with("release request\nrelease document\n")) << xml.calls();
    }
    EXPECT_EQ(error_, "");
}

TEST_F(XmlLoadFailure, ASelectionOrRowThatFailsInItselfIsThrownAndReleasesTheDocument) {
    request_.targetMode = DATA_TABLE;
    for (const char* step : {"loadFile", "setSelectionNamespaces", "selectNodes",
                             "setKeyExpression", "appendKeyText", "forEachChild"}) {
        FakeXml xml;
        xml.selectedCount = 1;
        xml.failAt(step);
        XMLHandler handler(logger_, xml, connections_, endMark_);
        EXPECT_THROW(handler.Read(request_, script_, error_), PlatformError) << step;
        EXPECT_TRUE(xml.calls().ends_with("\nrelease document\n")) << xml.calls();
    }
    EXPECT_EQ(error_, "");
}

TEST_F(XmlLoadFailure, AConvertedPayloadThatCannotBeMadeIsReportedWithoutTheSystemsReport) {
    request_.filename = URL;
    request_.sourceInFormat = 1;
    xml_.failAt("createDocument", 2);
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "ERROR: KDFToXml(): Failed to create the XML Document.\n");
    EXPECT_EQ(xml_.calls(),
              "createRequest\n"
              "createDocument UTF-8 for a response\n"
              "open http://feeds.example/a.xml?day=1 - -\n"
              "send\n"
              "loadInto\n"
              "createDocument UTF-8 for a response\n"
              "release document\n"
              "release request\n");
}

TEST_F(XmlLoadFailure, ASelectionWithoutANodeListIsReportedWithTheParsersReason) {
    request_.filename = URL;  // a response may be no XML; a file would not get this far
    xml_.selects = false;
    xml_.unreadable = "Invalid at the top level of the document.";
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "No node set is fetched: Invalid at the top level of the document.\n");
}

TEST_F(XmlLoadFailure, ASelectionWithoutANodeListIsReportedWithoutAReasonToo) {
    xml_.selects = false;
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "No node set is fetched: \n");
}

/// The error of a load whose `occurrence`th call of that name fails, behind what it said before.
class XmlAppendedFailure : public XMLHandlerFixture {
protected:
    std::string errorOf(const std::string& source, const char* call, int occurrence = 1) {
        FakeXml xml;
        xml.failAt(call, occurrence);
        request_.filename = source;
        request_.sourceInFormat = 1;
        error_ = "before\n";
        EXPECT_FALSE(
            XMLHandler(logger_, xml, connections_, endMark_).Read(request_, script_, error_));
        return error_;
    }
};

TEST_F(XmlAppendedFailure, FollowsWhatTheErrorAlreadySays) {
    const std::string report = FakeXml::failureReport();
    const std::string notMade = "before\nFailed to instantiate an XML DOM.\n" + report;
    EXPECT_EQ(errorOf("a.xml", "createDocument"), notMade);
    EXPECT_EQ(errorOf(URL, "createRequest"), notMade);
    EXPECT_EQ(errorOf(URL, "open"),
              std::string("before\nFailed to load DOM from ") + URL + ".\n" + report);
    EXPECT_EQ(errorOf(URL, "createDocument", 2),
              "before\nERROR: KDFToXml(): Failed to create the XML Document.\n");
}

TEST_F(XmlAppendedFailure, OfAFileOrASelectionFollowsItToo) {
    error_ = "before\n";
    xml_.unreadable = "reason";
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "before\nFailed to load DOM from fixtures.xml.\nreason\n");
    xml_.unreadable.clear();
    xml_.selects = false;
    EXPECT_FALSE(read());
    EXPECT_EQ(error_,
              "before\nFailed to load DOM from fixtures.xml.\nreason\n"
              "No node set is fetched: \n");
}

TEST_F(XmlLoadFailure, LeavesAReaderThatWorksOn) {
    xml_.failAt("selectNodes");
    EXPECT_THROW(read(), PlatformError);
    EXPECT_TRUE(read());
    EXPECT_EQ(error_, "");
}

}  // namespace
}  // namespace intake
