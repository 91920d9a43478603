// The steps of a load, in order, as the XML services see them.

#include "tests/readers/xml/XMLHandlerFixture.h"

namespace intake {
namespace {

using XmlLoadSteps = XMLHandlerFixture;

TEST_F(XmlLoadSteps, AFileIsLoadedAndSelectedFrom) {
    EXPECT_TRUE(read());
    EXPECT_EQ(xml_.calls(),
              "createDocument UTF-8 for a file\n"
              "loadFile fixtures.xml\n"
              "setSelectionNamespaces xmlns:f='urn:f'\n"
              "selectNodes /a/b\n"
              "release document\n");
    EXPECT_EQ(error_, "");
}

TEST_F(XmlLoadSteps, AUrlIsOpenedSentAndParsedIntoADocument) {
    for (const char* url : {"http://feeds.example/a.xml", "https://feeds.example/a.xml",
                            "ftp://feeds.example/a.xml"}) {
        FakeXml xml;
        request_.filename = url;
        EXPECT_TRUE(
            XMLHandler(logger_, xml, connections_, endMark_).Read(request_, script_, error_));
        EXPECT_EQ(xml.calls(),
                  "createRequest\n"
                  "createDocument UTF-8 for a response\n"
                  "open " +
                      request_.filename +
                      " - -\n"
                      "send\n"
                      "loadInto\n"
                      "release request\n"
                      "setSelectionNamespaces xmlns:f='urn:f'\n"
                      "selectNodes /a/b\n"
                      "release document\n");
        EXPECT_EQ(error_, "");
    }
}

TEST_F(XmlLoadSteps, HeadersStandBetweenOpeningAndSending) {
    request_.filename = "http://feeds.example/a.xml?day=1";
    request_.avoidCache = true;
    request_.useCustomHeaders = 1;
    request_.customHeaders = "X-Desk: sport\nX-Token:7";
    EXPECT_TRUE(read());
    EXPECT_EQ(xml_.calls(),
              "createRequest\n"
              "createDocument UTF-8 for a response\n"
              "open http://feeds.example/a.xml?day=1 - -\n"
              "setHeader |Cache-Control|no-cache|\n"
              "setHeader |Pragma|no-cache|\n"
              "setHeader |If-Modified-Since|Sat, 1 Jan 2000 00:00:00 GMT|\n"
              "setHeader |X-Desk| sport|\n"
              "setHeader |X-Token|7|\n"
              "send\n"
              "loadInto\n"
              "release request\n"
              "setSelectionNamespaces xmlns:f='urn:f'\n"
              "selectNodes /a/b\n"
              "release document\n");
}

TEST_F(XmlLoadSteps, AnFtpSourceGetsNoHeadersAndNoQuery) {
    request_.filename = "ftp://feeds.example/a.xml";
    request_.avoidCache = true;
    request_.useCustomHeaders = 1;
    request_.customHeaders = "X-Desk: sport";
    EXPECT_TRUE(read());
    EXPECT_EQ(xml_.calls(),
              "createRequest\n"
              "createDocument UTF-8 for a response\n"
              "open ftp://feeds.example/a.xml - -\n"
              "send\n"
              "loadInto\n"
              "release request\n"
              "setSelectionNamespaces xmlns:f='urn:f'\n"
              "selectNodes /a/b\n"
              "release document\n");
}

/// The call that opens the URL of a request.
class XmlCredentials : public XMLHandlerFixture {
protected:
    XmlCredentials() {
        request_.filename = "https://feeds.example/a.xml";
        request_.userName = "desk";
        request_.password = "s3cret";
    }

    std::string openCall() {
        EXPECT_TRUE(read());
        const size_t start = xml_.calls().find("open ");
        return xml_.calls().substr(start, xml_.calls().find('\n', start) - start);
    }
};

TEST_F(XmlCredentials, AreLeftOutWithoutUseAuth) {
    EXPECT_EQ(openCall(), "open https://feeds.example/a.xml - -");
}

TEST_F(XmlCredentials, ArePassedWithUseAuth) {
    request_.useAuth = true;
    EXPECT_EQ(openCall(), "open https://feeds.example/a.xml |desk| |s3cret|");
}

TEST_F(XmlCredentials, ArePassedEvenWhenEmpty) {
    request_.useAuth = true;
    request_.userName = request_.password = "";
    EXPECT_EQ(openCall(), "open https://feeds.example/a.xml || ||");
}

TEST_F(XmlCredentials, ArePassedToAnFtpSourceToo) {
    request_.filename = "ftp://feeds.example/a.xml";
    request_.useAuth = true;
    EXPECT_EQ(openCall(), "open ftp://feeds.example/a.xml |desk| |s3cret|");
}

TEST_F(XmlLoadSteps, AnOutputFormatThatDoesNotExistIsText) {
    request_.targetMode = SHARED_MEMORY;
    request_.targetOutFormat = 2;
    xml_.selectedCount = 1;
    EXPECT_TRUE(read());
    EXPECT_NE(xml_.calls().find("appendText\n"), std::string::npos) << xml_.calls();
    EXPECT_EQ(xml_.calls().find("appendMarkup\n"), std::string::npos) << xml_.calls();
}

/// The documents that a request makes, in their order.
class XmlEncoding : public XMLHandlerFixture {
protected:
    std::string documents(const std::string& source, int32_t encoding) {
        FakeXml xml;
        request_.filename = source;
        request_.encoding = encoding;
        EXPECT_TRUE(
            XMLHandler(logger_, xml, connections_, endMark_).Read(request_, script_, error_));
        std::string made;
        for (size_t at = 0; (at = xml.calls().find("createDocument ", at)) != std::string::npos;) {
            at += sizeof("createDocument");
            made += xml.calls().substr(at, xml.calls().find_first_of(" \n", at) - at) + ";";
        }
        return made;
    }
};

TEST_F(XmlEncoding, TwoIsIso88591AndAllElseUtf8) {
    for (const std::string source : {"a.xml", "http://feeds.example/a.xml"}) {
        EXPECT_EQ(documents(source, 0), "UTF-8;");
        EXPECT_EQ(documents(source, 1), "UTF-8;");
        EXPECT_EQ(documents(source, 2), "ISO-8859-1;");
        EXPECT_EQ(documents(source, 3), "UTF-8;");
        EXPECT_EQ(documents(source, -1), "UTF-8;");
    }
}

TEST_F(XmlEncoding, APayloadFromAUrlTakesItOnlyOnceConverted) {
    request_.sourceInFormat = 1;
    EXPECT_EQ(documents("http://feeds.example/a.xml", 2), "UTF-8;ISO-8859-1;");
    EXPECT_EQ(documents("ftp://feeds.example/a.xml", 0), "UTF-8;UTF-8;");
}

TEST_F(XmlEncoding, AnInputFormatThatDoesNotExistIsNoPayload) {
    request_.sourceInFormat = 2;
    EXPECT_EQ(documents("http://feeds.example/a.xml", 2), "ISO-8859-1;");
}

TEST_F(XmlEncoding, APayloadFromAFileIsNotConverted) {
    request_.sourceInFormat = 1;
    EXPECT_EQ(documents("a.xml", 2), "ISO-8859-1;");
}

TEST_F(XmlLoadSteps, APayloadFromAUrlIsReplacedByItsConversionBeforeTheSelection) {
    request_.filename = "http://feeds.example/a.xml";
    request_.sourceInFormat = 1;
    EXPECT_TRUE(read());
    EXPECT_EQ(xml_.calls(),
              "createRequest\n"
              "createDocument UTF-8 for a response\n"
              "open http://feeds.example/a.xml - -\n"
              "send\n"
              "loadInto\n"
              "createDocument UTF-8 for a response\n"
              "loadText <payload/>\n"
              "release document\n"
              "release request\n"
              "setSelectionNamespaces xmlns:f='urn:f'\n"
              "selectNodes /a/b\n"
              "release document\n");
}

}  // namespace
}  // namespace intake
