// Documents over HTTP.

#include "tests/http/support/ScriptedServer.h"
#include "tests/platform/xml/XmlRequestTest.h"

namespace intake {

namespace {

using XmlRequests = XmlRequestTest;

std::string xml(const std::string& mediaType, const std::string& body) {
    return reply("200 OK", body, "Content-Type: " + mediaType + "\r\n").bytes;
}

/// The value of a header of a request; "(none)" when it is not there.
std::string headerOf(const std::string& request, const std::string& name) {
    const size_t start = request.find("\r\n" + name + ": ");
    if (start == std::string::npos) {
        return "(none)";
    }
    const size_t value = start + name.size() + 4;
    return request.substr(value, request.find("\r\n", value) - value);
}

TEST_F(XmlRequests, ABodyIsLoaded) {
    ScriptedServer server({reply("200 OK", "<a> 1 </a>")});
    fetch(server.url("/data.xml?q=0"));
    EXPECT_EQ(texts("/a"), "1|");
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_TRUE(server.requests()[0].starts_with("GET /data.xml?q=0 HTTP/1.1\r\n"));
}

TEST_F(XmlRequests, TheUserAgentIsThatOfTheHttpTransport) {
    ScriptedServer server({reply("200 OK", "<a/>")});
    fetch(server.url("/"));
    EXPECT_EQ(headerOf(server.requests().at(0), "User-Agent"), "NXR/1.0");
}

TEST_F(XmlRequests, AUrlIsAskedForAsItStands) {
    ScriptedServer server({reply("200 OK", "<a/>")});
    fetch(server.url("/feeds/../a/./data.xml"));
    EXPECT_TRUE(server.requests().at(0).starts_with("GET /feeds/../a/./data.xml HTTP/1.1\r\n"))
        << server.requests().at(0);
}

TEST_F(XmlRequests, ABodyThatIsNoXmlEmptiesTheDocument) {
    load("<before/>");
    ScriptedServer server({reply("200 OK", "not XML")});
    fetch(server.url("/"));
    EXPECT_EQ(document_->rootElement(), nullptr);
}

TEST_F(XmlRequests, TheStatusDecidesNothing) {
    ScriptedServer server({reply("500 Internal Server Error", "<a>1</a>")});
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "1|");
}

TEST_F(XmlRequests, AnEmptyBodyEmptiesTheDocument) {
    ScriptedServer server({reply("404 Not Found", "")});
    fetch(server.url("/"));
    EXPECT_EQ(document_->rootElement(), nullptr);
}

TEST_F(XmlRequests, ARedirectIsFollowed) {
    ScriptedServer server({reply("302 Found", "", "Location: /new\r\n"), reply("200 OK", "<a/>")});
    fetch(server.url("/old"));
    EXPECT_EQ(names("/*"), "a|");
}

TEST_F(XmlRequests, HeadersAreSentTrimmedAndRepeatedOnesAreJoined) {
    ScriptedServer server({reply("200 OK", "<a/>")});
    request_->open(server.url("/"), nullptr, nullptr);
    request_->setHeader("X-One", " 1 ");
    request_->setHeader("X-Two", "2");
    request_->setHeader(" x-one", "one");
    request_->setHeader("X-Empty", "");
    request_->send();
    const std::string request = server.requests().at(0);
    EXPECT_EQ(headerOf(request, "X-One"), "1, one");
    EXPECT_EQ(headerOf(request, "X-Two"), "2");
    EXPECT_NE(request.find("\r\nX-Empty:\r\n"), std::string::npos) << request;
}

TEST_F(XmlRequests, AHeaderOfTheLibraryIsReplaced) {
    ScriptedServer server({reply("200 OK", "<a/>")});
    request_->open(server.url("/"), nullptr, nullptr);
    request_->setHeader("User-Agent", "studio");
    request_->send();
    EXPECT_EQ(headerOf(server.requests().at(0), "User-Agent"), "studio");
}

TEST_F(XmlRequests, WhatMayNotStandInAUrlIsEscaped) {
    ScriptedServer server({reply("200 OK", "<a/>")});
    fetch(server.url("/my data/ä.xml"));
    EXPECT_TRUE(server.requests().at(0).starts_with("GET /my%20data/%c3%a4.xml HTTP/1.1\r\n"))
        << server.requests().at(0);
}

TEST_F(XmlRequests, TheCharsetOfTheResponseGoesBeforeTheDeclaration) {
    ScriptedServer server({{xml("text/xml; charset=\"iso-8859-1\"",
                                "<?xml version='1.0' encoding='UTF-8'?><a>\xC3\xA4</a>")}});
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "\xC3\x83\xC2\xA4|");
}

TEST_F(XmlRequests, AMarkGoesBeforeTheCharsetOfTheResponse) {
    ScriptedServer server({{xml("text/xml; charset=iso-8859-1", "\xEF\xBB\xBF<a>\xC3\xA4</a>")}});
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "\xC3\xA4|");
}

TEST_F(XmlRequests, WithoutACharsetOrWithAnUnknownOneTheDeclarationDecides) {
    const std::string body = "<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>";
    ScriptedServer server({{xml("text/xml", body)}, {xml("text/xml;charset=none-such", body)}});
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "\xE2\x82\xAC|");
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "\xE2\x82\xAC|");
}

TEST_F(XmlRequests, AnExternalEntityIsNeverAskedFor) {
    ScriptedServer other(std::vector<Reply>{});
    ScriptedServer server(
        {reply("200 OK", "<!DOCTYPE a [<!ENTITY e SYSTEM '" + other.url("/e") + "'>]><a>&e;</a>")});
    fetch(server.url("/"));
    EXPECT_EQ(document_->rootElement(), nullptr);
    EXPECT_EQ(other.requests().size(), 0U);
}

TEST_F(XmlRequests, AProxyOfTheEnvironmentIsNotUsed) {
    ScriptedServer proxy(std::vector<Reply>{});
    const EnvironmentVariable set("http_proxy", "http://" + proxy.address());
    ScriptedServer server({reply("200 OK", "<a/>")});
    fetch(server.url("/"));
    EXPECT_EQ(names("/*"), "a|");
    EXPECT_EQ(proxy.requests().size(), 0U);
}

}  // namespace

}  // namespace intake
