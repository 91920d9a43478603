// Responses and their bodies.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"

namespace intake {

namespace {

using HttpBodyTest = HttpTest;

constexpr const char* CHUNKED = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
constexpr const char* WITHOUT_LENGTH = "HTTP/1.1 200 OK\r\n\r\n";
constexpr const char* OF_TEN_BYTES = "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n";

void expectBody(const Fetched& fetched, const std::string& body) {
    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, body);
    EXPECT_EQ(fetched.out, RETRIEVED);
    EXPECT_EQ(fetched.err, "");
}

void expectBrokenBody(const Fetched& fetched) {
    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, RETRIEVED + errorWithinBody(12030));
}

TEST_F(HttpBodyTest, ChunksAreJoined) {
    ScriptedServer server({{CHUNKED + std::string("3\r\n[1,\r\n2;x=y\r\n2]\r\n0\r\n\r\n")}});

    expectBody(fetch(server.url("/")), "[1,2]");
}

TEST_F(HttpBodyTest, LinesBehindTheLastChunkDoNotCount) {
    ScriptedServer server({{CHUNKED + std::string("2\r\n[]\r\n0\r\nX-Sum: 1\r\n\r\n")}});

    expectBody(fetch(server.url("/")), "[]");
}

TEST_F(HttpBodyTest, LinesBehindTheLastChunkMayLookLikeAStatus) {
    for (const char* line : {"HTTP/2: 1", "HTTP/1.1 200: OK"}) {
        ScriptedServer server({{CHUNKED + std::string("2\r\n[]\r\n0\r\n") + line + "\r\n\r\n"}});
        expectBody(fetch(server.url("/")), "[]");
    }
}

TEST_F(HttpBodyTest, ABodyThatIsSaidToBePackedIsTakenAsItComes) {
    const std::string bytes("\x1F\x8B\x08\0\0", 5);
    for (const char* packing : {"gzip", "deflate"}) {
        ScriptedServer server(
            {reply("200 OK", bytes, "Content-Encoding: " + std::string(packing) + "\r\n")});
        expectBody(fetch(server.url("/")), bytes);
    }
}

TEST_F(HttpBodyTest, ChunkedBodiesMayBeEmpty) {
    ScriptedServer server({{CHUNKED + std::string("0\r\n\r\n")}});

    expectBody(fetch(server.url("/")), "");
}

TEST_F(HttpBodyTest, ABodyWithoutALengthEndsWithTheConnection) {
    ScriptedServer server({{WITHOUT_LENGTH + std::string("[1,2]"), Then::CLOSE}});

    expectBody(fetch(server.url("/")), "[1,2]");
}

TEST_F(HttpBodyTest, ABodyMayBeEmpty) {
    ScriptedServer server({reply("200 OK", "")});

    expectBody(fetch(server.url("/")), "");
}

TEST_F(HttpBodyTest, AStatusWithoutABodyIsNoFailure) {
    ScriptedServer server({{"HTTP/1.1 204 No Content\r\n\r\n"}});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "");
    EXPECT_EQ(fetched.out, otherStatus(204));
}

TEST_F(HttpBodyTest, ABodyThatEndsBeforeItsLengthIsAFailure) {
    ScriptedServer server({{OF_TEN_BYTES + std::string("[1,"), Then::CLOSE}});

    expectBrokenBody(fetch(server.url("/")));
}

TEST_F(HttpBodyTest, ABodyThatEndsBeforeItsFirstByteIsAFailure) {
    ScriptedServer server({{OF_TEN_BYTES, Then::CLOSE}});

    expectBrokenBody(fetch(server.url("/")));
}

TEST_F(HttpBodyTest, AChunkedBodyWithoutItsLastChunkIsAFailure) {
    ScriptedServer server({{CHUNKED + std::string("3\r\n[1,\r\n"), Then::CLOSE}});

    expectBrokenBody(fetch(server.url("/")));
}

TEST_F(HttpBodyTest, AConnectionThatIsResetWithinTheBodyIsAFailure) {
    ScriptedServer server({{CHUNKED + std::string("3\r\n[1,\r\n"), Then::CUT}});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    // A reset can overtake the header that was sent before it.
    EXPECT_TRUE(fetched.out == RETRIEVED + errorWithinBody(12030) || fetched.out == error(12030))
        << fetched.out;
}

TEST_F(HttpBodyTest, AConnectionThatIsCutBeforeTheHeaderEndsIsAFailure) {
    ScriptedServer server({{"HTTP/1.1 200 OK\r\nContent-Le", Then::CLOSE}});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12030));
}

TEST_F(HttpBodyTest, AConnectionThatIsCutBeforeAnyAnswerIsAFailure) {
    ScriptedServer server({{"", Then::CLOSE}, {"", Then::CLOSE}});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12030));
}

TEST_F(HttpBodyTest, AnAnswerThatIsNoHttpIsAFailure) {
    ScriptedServer server({{"220 mail.example ready\r\n", Then::CLOSE}});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12152));
}

}  // namespace

}  // namespace intake
