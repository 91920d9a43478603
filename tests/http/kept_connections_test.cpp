// Whatever connection a load gets, it is answered as if it were the first.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/base64.h"
#include "tests/http/support/challenges.h"

namespace intake {

namespace {

class HttpKeptConnectionsTest : public HttpTest {
protected:
    void expectBody(const std::string& body, const Fetched& fetched) {
        EXPECT_TRUE(fetched.success);
        EXPECT_EQ(fetched.body, body);
        EXPECT_EQ(fetched.out, RETRIEVED);
        EXPECT_EQ(fetched.err, "");
    }
};

TEST_F(HttpKeptConnectionsTest, AServerMayCloseTheConnectionAfterALoad) {
    ScriptedServer server({{reply("200 OK", "[1]").bytes, Then::CLOSE}, reply("200 OK", "[2]")});

    expectBody("[1]", fetch(server.url("/")));
    expectBody("[2]", fetch(server.url("/")));
}

TEST_F(HttpKeptConnectionsTest, AServerMayResetTheConnectionAfterALoad) {
    ScriptedServer server({{reply("200 OK", "[1]").bytes, Then::CUT}, reply("200 OK", "[2]")});

    expectBody("[1]", fetch(server.url("/")));
    expectBody("[2]", fetch(server.url("/")));
}

TEST_F(HttpKeptConnectionsTest, AConnectionCanBeClosedBetweenLoads) {
    ScriptedServer server({reply("200 OK", "[1]"), reply("200 OK", "[2]")});

    expectBody("[1]", fetch(server.url("/")));
    connections_->close();
    expectBody("[2]", fetch(server.url("/")));
    EXPECT_EQ(server.connections(), 2U);
}

TEST_F(HttpKeptConnectionsTest, ACookieIsNotTakenToTheNextLoad) {
    ScriptedServer server(
        {reply("200 OK", "[1]", "Set-Cookie: seat=7; Path=/\r\n"), reply("200 OK", "[2]")});

    expectBody("[1]", fetch(server.url("/")));
    expectBody("[2]", fetch(server.url("/")));
    EXPECT_EQ(server.requests()[1], server.requests()[0]);
}

TEST_F(HttpKeptConnectionsTest, AHeaderIsNotTakenToTheNextLoad) {
    ScriptedServer server({reply("200 OK", "[1]"), reply("200 OK", "[2]")});

    request_.useCustomHeaders = 1;
    request_.customHeaders = "X-Api-Key: 12345";
    expectBody("[1]", fetch(server.url("/")));
    request_.useCustomHeaders = 0;
    expectBody("[2]", fetch(server.url("/")));
    EXPECT_NE(server.requests()[0].find("X-Api-Key: 12345\r\n"), std::string::npos);
    EXPECT_EQ(server.requests()[1].find("X-Api-Key"), std::string::npos);
}

TEST_F(HttpKeptConnectionsTest, NothingIsProvedBeforeTheServerAsksAgain) {
    ScriptedServer server(
        {challenge({BASIC}), reply("200 OK", "[1]"), challenge({BASIC}), reply("200 OK", "[2]")});
    request_.useAuth = true;
    request_.userName = "designer";
    request_.password = "secret";

    EXPECT_EQ(fetch(server.url("/")).body, "[1]");
    EXPECT_EQ(fetch(server.url("/")).body, "[2]");
    const std::string proof = "Basic " + toBase64("designer:secret");
    EXPECT_EQ(proofs(server), (std::vector<std::string>{"", proof, "", proof}));
}

TEST_F(HttpKeptConnectionsTest, WhatAServerSaysUnaskedIsNotTheNextAnswer) {
    const std::string unasked = reply("200 OK", "[9]").bytes;
    for (const size_t size : {size_t{0}, size_t{3}, size_t{20'000}, size_t{500'000}}) {
        const std::string body(size, '1');
        ScriptedServer server({{reply("200 OK", body).bytes + unasked}, reply("200 OK", "[2]")});

        expectBody(body, fetch(server.url("/")));
        expectBody("[2]", fetch(server.url("/")));
    }
}

}  // namespace

}  // namespace intake
