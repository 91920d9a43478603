#include "workbench/serve/Gate.h"

#include <gtest/gtest.h>

namespace {

using serve::Gate;
using serve::WebRequest;

constexpr uint16_t port = 8080;
const std::string session(64, 'a');

WebRequest request(const char* method, const char* path) {
    WebRequest made;
    made.method = method;
    made.path = path;
    made.headers = {{"Host", "127.0.0.1:8080"},
                    {"Origin", "http://127.0.0.1:8080"},
                    {"Content-Type", "application/json"}};
    return made;
}

std::string cookieOf(const serve::WebResponse& response) {
    const std::string& cookie = response.headers.at(0).second;
    return cookie.substr(0, cookie.find(';'));
}

unsigned statusOf(const Gate& gate, const WebRequest& asked, bool isUpgrade = false) {
    const auto refused = gate.refusal(asked, isUpgrade);
    return refused ? refused->status : 0;
}

/// One that may pass.
WebRequest allowed(const Gate& gate, const char* method, const char* path) {
    WebRequest made = request(method, path);
    made.headers["Cookie"] = "other=1; " + cookieOf(gate.logIn(gate.token()));
    return made;
}

}  // namespace

TEST(GateTest, LetsInWhoHasTheCookie) {
    const Gate gate(port, session);
    EXPECT_EQ(statusOf(gate, allowed(gate, "GET", "/api/v1/about")), 0U);
    EXPECT_EQ(statusOf(gate, allowed(gate, "POST", "/api/v1/instances/a/load")), 0U);
    EXPECT_EQ(statusOf(gate, allowed(gate, "GET", "/api/v1/events"), true), 0U);
}

TEST(GateTest, RefusesTheInterfaceWithoutTheCookie) {
    const Gate gate(port, session);
    EXPECT_EQ(statusOf(gate, request("GET", "/api/v1/about")), 401U);
    WebRequest wrong = allowed(gate, "GET", "/api/v1/about");
    wrong.headers["Cookie"].back() ^= 1;
    EXPECT_EQ(statusOf(gate, wrong), 401U);
    WebRequest ofAnother = allowed(Gate(port, std::string(64, 'b')), "GET", "/api/v1/about");
    EXPECT_EQ(statusOf(gate, ofAnother), 401U);
}

TEST(GateTest, LetsInPagesOfTheServerBefore) {
    const WebRequest before = allowed(Gate(port, session), "GET", "/api/v1/about");
    EXPECT_EQ(statusOf(Gate(port, session), before), 0U);
    EXPECT_EQ(before.header("Cookie"), "other=1; intake-8080=" + session);
}

TEST(GateTest, ShowsThePageItselfToAnybody) {
    EXPECT_EQ(statusOf(Gate(port, session), request("GET", "/")), 0U);
    EXPECT_EQ(statusOf(Gate(port, session), request("GET", "/app.js")), 0U);
}

TEST(GateTest, OpensNoWebSocketWithoutTheCookieWhateverItsPath) {
    const Gate gate(port, session);
    for (const char* const path : {"/api/v1/events", "/", "api/v1/events", "/api/v1/session"})
        EXPECT_EQ(statusOf(gate, request("GET", path), true), 401U) << path;
    EXPECT_EQ(statusOf(gate, request("POST", "/api/v1/session"), true), 401U);
}

TEST(GateTest, GivesTheCookieForTheTokenOnly) {
    const Gate gate(port, session);
    EXPECT_EQ(gate.token().size(), 64U);
    EXPECT_NE(gate.token(), Gate(port, session).token());
    EXPECT_EQ(gate.logIn("").status, 401U);
    EXPECT_EQ(gate.logIn(std::string(64, '0')).status, 401U);
    const serve::WebResponse answer = gate.logIn(gate.token());
    EXPECT_EQ(answer.status, 204U);
    EXPECT_EQ(cookieOf(answer).find(gate.token()), std::string::npos);
    EXPECT_TRUE(answer.headers.at(0).second.ends_with("; Path=/; HttpOnly; SameSite=Strict"));
    EXPECT_EQ(statusOf(gate, request("POST", "/api/v1/session")), 0U);
}

TEST(GateTest, KnowsItsOwnNamesOnly) {
    const Gate gate(port, session);
    for (const char* const host : {"[::1]:8080", "localhost:8080"}) {
        WebRequest asked = request("GET", "/");
        asked.headers["Host"] = host;
        EXPECT_EQ(statusOf(gate, asked), 0U) << host;
    }
    for (const char* const host : {"", "evil.example", "127.0.0.1", "127.0.0.1:8081", "localhost",
                                   "127.0.0.1:8080.evil.example"}) {
        WebRequest asked = request("GET", "/");
        asked.headers["Host"] = host;
        EXPECT_EQ(statusOf(gate, asked), 403U) << host;
    }
}

TEST(GateTest, RefusesWhatOtherPagesSend) {
    const Gate gate(port, session);
    for (const char* const origin :
         {"", "null", "http://evil.example", "https://127.0.0.1:8080", "http://localhost:8080"}) {
        WebRequest asked = allowed(gate, "POST", "/api/v1/instances/a/load");
        asked.headers["Origin"] = origin;
        EXPECT_EQ(statusOf(gate, asked), 403U) << origin;
        asked = allowed(gate, "GET", "/api/v1/events");
        asked.headers["Origin"] = origin;
        EXPECT_EQ(statusOf(gate, asked, true), 403U) << origin;
    }
}

TEST(GateTest, TakesNothingButJson) {
    const Gate gate(port, session);
    for (const char* const type : {"", "text/plain", "application/x-www-form-urlencoded",
                                   "multipart/form-data", "application/jsonp"}) {
        WebRequest asked = allowed(gate, "POST", "/api/v1/instances/a/load");
        asked.headers["Content-Type"] = type;
        EXPECT_EQ(statusOf(gate, asked), 415U) << type;
    }
    WebRequest asked = allowed(gate, "POST", "/api/v1/instances/a/load");
    asked.headers["Content-Type"] = "Application/JSON ; charset=utf-8";
    EXPECT_EQ(statusOf(gate, asked), 0U);
}
