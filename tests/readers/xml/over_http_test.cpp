// Loads from a real server on loopback.

#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "readers/xml/XMLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/support/AsWorker.h"

namespace intake {
namespace {

constexpr auto ROWS = "<a><b>x</b><b>y</b></a>";
constexpr auto SCRIPT = R"(T[0-1]=""x"",""y""; READER_NUM_RECORDS=2;)";

/// A reader with the services of this system, which reads the b of an a.
class XmlOverHttp : public testing::Test {
protected:
    XmlOverHttp() {
        logger_.setLevel(-1);
        request_.xpath = "/a/b";
        request_.table = 'T';
        request_.targetMode = DATA_FIELD_ARRAY;
        request_.numRows = 1000000;
    }

    bool read(const std::string& url) {
        request_.filename = url;
        script_.clear();
        return XMLHandler(logger_, systemPlatform().xml, *connections_, endMark_)
            .Read(request_, script_, error_);
    }

    const AsWorker worker_;
    FakeClock clock_;
    ReaderLogger logger_{clock_, systemPlatform().textFiles};
    EndMark endMark_;
    std::unique_ptr<KeptConnections> connections_ = systemPlatform().http.keepConnections();
    RequestRecord request_;
    std::string script_, error_;
};

TEST_F(XmlOverHttp, AWellFormedBodyGivesItsRowsWhateverTheStatus) {
    for (const char* status : {"200 OK", "203 Changed", "404 Not Found", "500 Failed"}) {
        ScriptedServer server({reply(status, ROWS)});
        EXPECT_TRUE(read(server.url("/a.xml"))) << status;
        EXPECT_EQ(script_, SCRIPT) << status;
    }
    EXPECT_EQ(error_, "");
}

TEST_F(XmlOverHttp, ABodyThatIsNotXmlGivesNoRowsAndNoErrorWhateverTheStatus) {
    for (const char* status : {"200 OK", "404 Not Found", "503 Busy"}) {
        for (const char* body : {"", "Not Found", "<html><br></html>", "<a><b>x</b>"}) {
            ScriptedServer server({reply(status, body)});
            EXPECT_TRUE(read(server.url("/a.xml"))) << status;
            EXPECT_EQ(script_, "") << status;
        }
    }
    EXPECT_EQ(error_, "");
}

TEST_F(XmlOverHttp, HeadersAgainstCachesAndOfOnesOwnAreSentInTheirOrder) {
    ScriptedServer server({reply("200 OK", ROWS)});
    request_.avoidCache = true;
    request_.useCustomHeaders = 1;
    request_.customHeaders = "X-Desk: sport\r\nnonsense\r\nX-At:12:30\r\n";
    EXPECT_TRUE(read(server.url("/a.xml?day=1")));
    EXPECT_EQ(script_, SCRIPT);
    const std::string sent = server.requests().at(0);
    EXPECT_EQ(sent.rfind("GET /a.xml?day=1 HTTP/1.1\r\n", 0), 0U) << sent;
    EXPECT_NE(sent.find("\r\nCache-Control: no-cache\r\nPragma: no-cache\r\n"
                        "If-Modified-Since: Sat, 1 Jan 2000 00:00:00 GMT\r\n"
                        "X-Desk: sport\r\nX-At: 12\r\n"),
              std::string::npos)
        << sent;
    EXPECT_EQ(sent.find("nonsense"), std::string::npos) << sent;
}

TEST_F(XmlOverHttp, AUrlWithoutAQueryGetsANumberThatGrows) {
    ScriptedServer server({reply("200 OK", ROWS), reply("200 OK", ROWS)});
    request_.avoidCache = true;
    const auto numberOf = [](const std::string& sent) {
        const std::string start = "GET /a.xml?q=";
        EXPECT_EQ(sent.rfind(start, 0), 0U) << sent;
        return std::stoi(sent.substr(start.size()));
    };
    EXPECT_TRUE(read(server.url("/a.xml")));
    EXPECT_TRUE(read(server.url("/a.xml")));
    EXPECT_EQ(numberOf(server.requests().at(1)), numberOf(server.requests().at(0)) + 1);
}

TEST_F(XmlOverHttp, CredentialsAnswerAChallenge) {
    ScriptedServer server([](const std::string& sent) {
        return sent.find("\r\nAuthorization: Basic ZGVzazpzM2NyZXQ=\r\n") == std::string::npos
                   ? reply("401 Who", "", "WWW-Authenticate: Basic realm=\"desk\"\r\n")
                   : reply("200 OK", ROWS);
    });
    request_.userName = "desk";
    request_.password = "s3cret";
    EXPECT_TRUE(read(server.url("/a.xml")));
    EXPECT_EQ(script_, "");
    request_.useAuth = true;
    EXPECT_TRUE(read(server.url("/a.xml")));
    EXPECT_EQ(script_, SCRIPT);
}

TEST_F(XmlOverHttp, ABodyIsReadInTheCharsetOfItsContentType) {
    ScriptedServer server(
        {reply("200 OK", "<a><b>\xE9</b></a>", "Content-Type: text/xml; charset=ISO-8859-1\r\n")});
    EXPECT_TRUE(read(server.url("/a.xml")));
    EXPECT_EQ(script_, "T[0-0]=\"\"\xC3\xA9\"\"; READER_NUM_RECORDS=1;");
}

TEST_F(XmlOverHttp, APayloadIsConverted) {
    ScriptedServer server(
        {reply("200 OK", "<payload><field name='b'><value>x</value></field></payload>")});
    request_.xpath = "/payload/b";
    request_.sourceInFormat = 1;
    EXPECT_TRUE(read(server.url("/a.xml")));
    EXPECT_EQ(script_, R"(T[0-0]=""x""; READER_NUM_RECORDS=1;)");
}

TEST_F(XmlOverHttp, AServerThatHangsUpFailsWithTheSystemsReport) {
    ScriptedServer server({Reply{"", Then::CLOSE}});
    EXPECT_THROW(read(server.url("/a.xml")), PlatformError);
    EXPECT_EQ(script_, "");
}

}  // namespace
}  // namespace intake
