#include "readers/xml/xml_source.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

namespace intake {
namespace {

/// The headers of a request as lines of "name|value".
std::string headers(const RequestRecord& request) {
    std::string lines;
    for (const Header& header : requestHeaders(request)) {
        lines += header.name + "|" + header.value + "\n";
    }
    return lines;
}

std::string customHeaders(const std::string& text) {
    RequestRecord request;
    request.filename = "http://feeds.example/";
    request.useCustomHeaders = 1;
    request.customHeaders = text;
    return headers(request);
}

TEST(XmlSource, IsRemoteWhenItHoldsOneOfTheThreeSchemesAnywhere) {
    EXPECT_TRUE(isRemote("http://feeds.example/a.xml"));
    EXPECT_TRUE(isRemote("https://feeds.example/a.xml"));
    EXPECT_TRUE(isRemote("ftp://feeds.example/a.xml"));
    EXPECT_TRUE(isRemote("cache/http://feeds.example/a.xml"));
    EXPECT_TRUE(isRemote("cache/https://feeds.example/a.xml"));
    EXPECT_TRUE(isRemote(" ftp://feeds.example/a.xml"));
}

TEST(XmlSource, IsAPathOtherwise) {
    EXPECT_FALSE(isRemote(""));
    EXPECT_FALSE(isRemote("a.xml"));
    EXPECT_FALSE(isRemote("/data/http/a.xml"));
    EXPECT_FALSE(isRemote("http:/feeds.example/a.xml"));
    EXPECT_FALSE(isRemote("HTTP://feeds.example/a.xml"));
    EXPECT_FALSE(isRemote("file:///data/a.xml"));
}

TEST(XmlRequestUrl, IsTheSourceAsItStandsUnlessCachesAreToBeAvoided) {
    RequestRecord request;
    request.filename = "http://feeds.example/a b.xml#top";
    EXPECT_EQ(requestUrl(request), "http://feeds.example/a b.xml#top");
}

TEST(XmlRequestUrl, KeepsTheQueryThatItHas) {
    RequestRecord request;
    request.avoidCache = true;
    for (const char* url : {"http://feeds.example/a?day=1", "https://feeds.example/a?"}) {
        request.filename = url;
        EXPECT_EQ(requestUrl(request), url);
    }
}

TEST(XmlRequestUrl, OfAnFtpSourceIsLeftAlone) {
    RequestRecord request;
    request.avoidCache = true;
    request.filename = "ftp://feeds.example/a.xml";
    EXPECT_EQ(requestUrl(request), "ftp://feeds.example/a.xml");
}

TEST(XmlRequestUrl, IsUniqueAcrossTheThreadsOfAllInstances) {
    constexpr size_t THREADS = 4;
    constexpr size_t REQUESTS = 1000;
    RequestRecord request;
    request.avoidCache = true;
    request.filename = "http://feeds.example/a.xml";
    std::vector<std::set<std::string>> urls(THREADS);
    std::vector<std::thread> threads;
    for (std::set<std::string>& own : urls) {
        threads.emplace_back([&request, &own] {
            for (size_t i = 0; i < REQUESTS; ++i) {
                own.insert(requestUrl(request));
            }
        });
    }
    std::set<std::string> all;
    for (size_t i = 0; i < THREADS; ++i) {
        threads[i].join();
        all.merge(urls[i]);
    }
    EXPECT_EQ(all.size(), THREADS * REQUESTS);
}

TEST(XmlHeaders, AreNoneByDefault) {
    RequestRecord request;
    request.filename = "http://feeds.example/";
    request.customHeaders = "X-Unused: 1";
    EXPECT_EQ(headers(request), "");
}

TEST(XmlHeaders, AgainstCachesAreThreeEvenWithAQueryInTheUrl) {
    RequestRecord request;
    request.avoidCache = true;
    for (const char* url : {"http://feeds.example/", "https://feeds.example/a?day=1"}) {
        request.filename = url;
        EXPECT_EQ(headers(request),
                  "Cache-Control|no-cache\n"
                  "Pragma|no-cache\n"
                  "If-Modified-Since|Sat, 1 Jan 2000 00:00:00 GMT\n");
    }
}

TEST(XmlHeaders, OfOnesOwnFollowThoseAgainstCaches) {
    RequestRecord request;
    request.filename = "http://feeds.example/";
    request.avoidCache = true;
    request.useCustomHeaders = 1;
    request.customHeaders = "Pragma:mine";
    EXPECT_EQ(headers(request),
              "Cache-Control|no-cache\n"
              "Pragma|no-cache\n"
              "If-Modified-Since|Sat, 1 Jan 2000 00:00:00 GMT\n"
              "Pragma|mine\n");
}

TEST(XmlHeaders, OfOnesOwnAreAskedForByAnyNumberButZero) {
    RequestRecord request;
    request.filename = "http://feeds.example/";
    request.customHeaders = "X-Desk:sport";
    for (const int32_t use : {1, 2, -1}) {
        request.useCustomHeaders = use;
        EXPECT_EQ(headers(request), "X-Desk|sport\n") << use;
    }
}

TEST(XmlHeaders, OfAnFtpSourceAreNone) {
    RequestRecord request;
    request.filename = "ftp://feeds.example/a.xml";
    request.avoidCache = true;
    request.useCustomHeaders = 1;
    request.customHeaders = "X-Desk: sport";
    EXPECT_EQ(headers(request), "");
}

TEST(XmlCustomHeaders, AreOneALineInTheirOrder) {
    EXPECT_EQ(customHeaders("X-B:2"), "X-B|2\n");
    EXPECT_EQ(customHeaders("X-B:2\nX-A:1\nX-B:3\n"), "X-B|2\nX-A|1\nX-B|3\n");
}

TEST(XmlCustomHeaders, KeepTheBlanksOfTheirPieces) {
    EXPECT_EQ(customHeaders("X-Desk : north sport "), "X-Desk | north sport \n");
}

TEST(XmlCustomHeaders, WithoutAColonSetNothing) {
    EXPECT_EQ(customHeaders("nonsense"), "");
    EXPECT_EQ(customHeaders("X-A:1\nnonsense\n\nX-B:2"), "X-A|1\nX-B|2\n");
    EXPECT_EQ(customHeaders(""), "");
    EXPECT_EQ(customHeaders("\n\n"), "");
}

TEST(XmlCustomHeaders, EndTheirValueAtItsSecondColon) {
    EXPECT_EQ(customHeaders("X-At:12:30\nReferer: http://desk.example/"),
              "X-At|12\nReferer| http\n");
}

TEST(XmlCustomHeaders, MayHaveAnEmptyValue) {
    EXPECT_EQ(customHeaders("X-A:\nX-B::2"), "X-A|\nX-B|\n");
}

TEST(XmlCustomHeaders, MayEndTheirLinesAsWindowsDoes) {
    EXPECT_EQ(customHeaders("X-A:1\r\nX-B:2:3\r\nnonsense\r\n"), "X-A|1\nX-B|2\n");
}

}  // namespace
}  // namespace intake
