// Redirects are followed, but not to anything but HTTP.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"

namespace intake {

namespace {

using HttpRedirectTest = HttpTest;

Reply redirectTo(const std::string& url) {
    return reply("302 Found", "moved", "Location: " + url + "\r\n");
}

void expectRefused(const Fetched& fetched) {
    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.body, "");
    EXPECT_EQ(fetched.out, error(12156));
}

TEST_F(HttpRedirectTest, ARedirectToAnotherServerIsFollowed) {
    ScriptedServer second({reply("200 OK", "[2]")});
    ScriptedServer first({redirectTo(second.url("/"))});

    EXPECT_EQ(fetch(first.url("/")).body, "[2]");
}

TEST_F(HttpRedirectTest, ARedirectToAnythingButHttpIsRefused) {
    ScriptedServer server({redirectTo("file:///etc/hostname")});

    expectRefused(fetch(server.url("/")));
}

TEST_F(HttpRedirectTest, AChainOfTenIsFollowed) {
    ScriptedServer server([count = 0](const std::string&) mutable {
        return ++count <= 10 ? redirectTo("/again") : reply("200 OK", "[1]");
    });

    EXPECT_EQ(fetch(server.url("/")).body, "[1]");
}

TEST_F(HttpRedirectTest, AnEleventhOfAChainIsRefused) {
    ScriptedServer server([count = 0](const std::string&) mutable {
        return ++count <= 11 ? redirectTo("/again") : reply("200 OK", "[1]");
    });

    expectRefused(fetch(server.url("/")));
}

TEST_F(HttpRedirectTest, ARedirectWithoutADestinationIsAStatusLikeOthers) {
    ScriptedServer server({reply("302 Found", "nowhere")});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "nowhere");
    EXPECT_EQ(fetched.out, otherStatus(302));
}

TEST_F(HttpRedirectTest, CredentialsAreNotSentToAnotherHostThatARedirectNames) {
    ScriptedServer other({reply("401 Unauthorized", "no", "WWW-Authenticate: Basic\r\n")});
    std::string elsewhere = other.url("/");
    elsewhere.replace(elsewhere.find("127.0.0.1"), 9, "localhost");
    ScriptedServer first({redirectTo(elsewhere)});
    request_.useAuth = true;
    request_.userName = "designer";
    request_.password = "secret";

    const Fetched fetched = fetch(first.url("/"));

    EXPECT_EQ(fetched.body, "no");
    EXPECT_EQ(fetched.out, SERVER_ASKS);
    EXPECT_EQ(first.requests().size(), 1U);
    ASSERT_EQ(other.requests().size(), 1U);
    EXPECT_EQ(other.requests().front().find("Authorization"), std::string::npos);
}

TEST_F(HttpRedirectTest, CredentialsAreNotSentToAnotherPortThatARedirectNames) {
    ScriptedServer other({reply("401 Unauthorized", "no", "WWW-Authenticate: Basic\r\n")});
    ScriptedServer first({redirectTo(other.url("/"))});
    request_.useAuth = true;
    request_.userName = "designer";
    request_.password = "secret";

    const Fetched fetched = fetch(first.url("/"));

    EXPECT_EQ(fetched.body, "no");
    ASSERT_EQ(other.requests().size(), 1U);
    EXPECT_EQ(other.requests().front().find("Authorization"), std::string::npos);
}

TEST_F(HttpRedirectTest, ARedirectToAServerThatBreaksOffIsNotTakenForAResponse) {
    ScriptedServer broken({Reply{"", Then::CUT}});
    ScriptedServer first({redirectTo(broken.url("/"))});

    const Fetched fetched = fetch(first.url("/"));

    EXPECT_EQ(fetched.out, "Error 12030 has occurred.\n");
}

}  // namespace

}  // namespace intake
