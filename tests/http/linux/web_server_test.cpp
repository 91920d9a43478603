// Fetches from a real web server.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/WebServer.h"

namespace intake {

namespace {

using HttpWebServerTest = HttpTest;

TEST_F(HttpWebServerTest, AFileOfAWebServerArrivesByteForByte) {
    WebServer server("");
    std::string bytes;
    for (int i = 0; i < 1'000'000; ++i) {
        bytes += static_cast<char>(i * 7 + i / 256);
    }
    server.write("data.bin", bytes);

    const Fetched fetched = fetch(server.url("/data.bin"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, bytes);
    EXPECT_EQ(fetched.out, RETRIEVED);
    EXPECT_EQ(fetched.err, "");
}

TEST_F(HttpWebServerTest, AStatusOtherThan200IsNoFailureAndItsBodyIsReturned) {
    WebServer server("location /busy { return 503 '{\"error\":\"busy\"}'; }");

    const Fetched fetched = fetch(server.url("/busy"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "{\"error\":\"busy\"}");
    EXPECT_EQ(fetched.out, otherStatus(503));
}

TEST_F(HttpWebServerTest, EveryKindOfRedirectIsFollowed) {
    WebServer server(R"(
        location = /a { return 301 /b; }
        location = /b { return 302 /c; }
        location = /c { return 303 /d; }
        location = /d { return 307 /e; }
        location = /e { return 308 /data.json; })");
    server.write("data.json", "[1]");

    const Fetched fetched = fetch(server.url("/a"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, RETRIEVED);
}

TEST_F(HttpWebServerTest, ALoopFails) {
    WebServer server("location /loop { return 302 /loop; }");

    const Fetched fetched = fetch(server.url("/loop"));

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.body, "");
    EXPECT_EQ(fetched.out, error(12156));
}

TEST_F(HttpWebServerTest, ARealServerAcceptsBasicCredentials) {
    WebServer server(R"(
        location /protected/ { auth_basic "stage"; auth_basic_user_file users; })");
    server.write("../users", "designer:{PLAIN}secret\n");
    server.write("protected/data.json", "[1]");

    request_.useAuth = true;
    request_.userName = "designer";
    request_.password = "secret";

    const Fetched fetched = fetch(server.url("/protected/data.json"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, SERVER_ASKS + RETRIEVED);
}

TEST_F(HttpWebServerTest, ARealServerRefusesAWrongPasswordAndItsBodyIsKept) {
    WebServer server(R"(
        location /protected/ {
            auth_basic "stage";
            auth_basic_user_file users;
            error_page 401 /refused.json;
        })");
    server.write("../users", "designer:{PLAIN}other\n");
    server.write("refused.json", "{\"refused\":1}");

    request_.useAuth = true;
    request_.userName = "designer";
    request_.password = "secret";

    const Fetched fetched = fetch(server.url("/protected/data.json"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "{\"refused\":1}");
    EXPECT_EQ(fetched.out, SERVER_ASKS + SERVER_ASKS);
}

}  // namespace

}  // namespace intake
