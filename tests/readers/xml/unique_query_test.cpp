// A program of its own, with one case: the number counts from the start of the process.

#include "tests/readers/xml/XMLHandlerFixture.h"

namespace intake {
namespace {

using XmlUniqueQuery = XMLHandlerFixture;

TEST_F(XmlUniqueQuery, CountsFromZeroAcrossInstancesAndOnlyWhereItIsAppended) {
    const auto opened = [this](const std::string& url, bool avoidCache) {
        FakeXml xml;
        request_.filename = url;
        request_.avoidCache = avoidCache;
        XMLHandler instance(logger_, xml, connections_, endMark_);
        EXPECT_TRUE(instance.Read(request_, script_, error_));
        const size_t start = xml.calls().find("open ") + 5;
        return xml.calls().substr(start, xml.calls().find(' ', start) - start);
    };
    EXPECT_EQ(opened("http://feeds.example/a", true), "http://feeds.example/a?q=0");
    EXPECT_EQ(opened("https://feeds.example/b", true), "https://feeds.example/b?q=1");
    EXPECT_EQ(opened("http://feeds.example/a", false), "http://feeds.example/a");
    EXPECT_EQ(opened("http://feeds.example/a?day=1", true), "http://feeds.example/a?day=1");
    EXPECT_EQ(opened("ftp://feeds.example/a", true), "ftp://feeds.example/a");
    EXPECT_EQ(opened("http://feeds.example/a", true), "http://feeds.example/a?q=2");
}

}  // namespace
}  // namespace intake
