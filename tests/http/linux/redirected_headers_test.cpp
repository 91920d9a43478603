// Which headers of one's own a redirect takes along.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"

namespace intake {

namespace {

using HttpRedirectedHeaders = HttpTest;

TEST_F(HttpRedirectedHeaders, AreNotSentToAnotherServerWhereTheyAreSecret) {
    ScriptedServer other({reply("200 OK", "[1]")});
    ScriptedServer first({reply("302 Found", "", "Location: " + other.url("/") + "\r\n")});
    request_.useCustomHeaders = 1;
    request_.customHeaders = "Authorization: Bearer t\nCookie: c=1\nX-Key: 1";

    EXPECT_EQ(fetch(first.url("/")).body, "[1]");

    const std::string told = first.requests().at(0), passedOn = other.requests().at(0);
    EXPECT_NE(told.find("Authorization: Bearer t\r\n"), std::string::npos) << told;
    EXPECT_NE(told.find("Cookie: c=1\r\n"), std::string::npos) << told;
    EXPECT_EQ(passedOn.find("Authorization"), std::string::npos) << passedOn;
    EXPECT_EQ(passedOn.find("Cookie"), std::string::npos) << passedOn;
    EXPECT_NE(passedOn.find("X-Key: 1\r\n"), std::string::npos) << passedOn;
}

}  // namespace

}  // namespace intake
