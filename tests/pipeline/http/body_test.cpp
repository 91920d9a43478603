#include <stdexcept>

#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

using Body = FetchTest;

TEST_F(Body, OfManyChunksIsJoinedInTheirOrder) {
    client_.respond({.chunks = {"{\"a\"", ":", "[1,2,", "3]}"}});

    EXPECT_EQ(fetch(), (Fetched{true, "{\"a\":[1,2,3]}", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\n"
                                   "available\nread 4\navailable\nread 1\navailable\nread 5\n"
                                   "available\nread 3\navailable\nclose\n");
}

TEST_F(Body, ThatIsEmptyIsASuccess) {
    client_.respond({});

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\navailable\nclose\n");
}

TEST_F(Body, ThatIsReadInSmallerPiecesThanAreAvailableIsWhole) {
    client_.respond({.chunks = {"abcdefgh", "ij"}, .mostPerRead = 3});

    EXPECT_EQ(fetch(), (Fetched{true, "abcdefghij", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\n"
                                   "available\nread 8\navailable\nread 5\navailable\nread 2\n"
                                   "available\nread 2\navailable\nclose\n");
}

TEST_F(Body, KeepsEveryByteAsItCame) {
    std::string bytes;
    for (int value = 0; value < 256; ++value) {
        bytes += static_cast<char>(value);
    }
    client_.respond({.chunks = {bytes, bytes}});

    EXPECT_EQ(fetch(), (Fetched{true, bytes + bytes, RETRIEVED}));
}

TEST_F(Body, OfManyMegabytesInUnevenChunksIsWhole) {
    FakeResponse response;
    std::string whole;
    for (size_t chunk = 0; chunk < 300; ++chunk) {
        response.chunks.emplace_back(chunk * 97 + 1, static_cast<char>('a' + chunk % 26));
        whole += response.chunks.back();
    }
    client_.respond(response);

    const Fetched fetched = fetch();
    EXPECT_TRUE(fetched.succeeded);
    EXPECT_TRUE(fetched.body == whole);  // compared apart: nobody wants to read the difference
    EXPECT_EQ(fetched.output, RETRIEVED);
}

TEST_F(Body, OfMoreThanTheLimitIsRefused) {
    ByteBuffer body;
    client_.respond({.chunks = {"abc", "de"}});
    testing::internal::CaptureStdout();
    EXPECT_TRUE(transport_.Fetch("http://a/", request_, body, 5));
    client_.respond({.chunks = {"abc", "def"}});
    ByteBuffer next;
    try {
        transport_.Fetch("http://a/", request_, next, 5);
        ADD_FAILURE() << "no refusal";
    } catch (const std::length_error& error) {
        EXPECT_STREQ(error.what(), "The response is larger than 5 bytes.\n");
    }
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(client_.calls().ends_with("close\n"));
}

TEST_F(Body, ThatBreaksOffBetweenChunksIsAFailure) {
    client_.respond({.chunks = {"[1,", "2]"}});
    client_.fail("available", HTTP_ERROR_CONNECTION_BROKEN, 2);

    const Fetched fetched = fetch();
    EXPECT_FALSE(fetched.succeeded);
    EXPECT_EQ(fetched.output, RETRIEVED + "Error 12030 in WinHttpQueryDataAvailable.\n");
    EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\navailable\nread 3\navailable\nclose\n");
}

TEST_F(Body, ThatBreaksOffInTheMiddleOfAChunkIsAFailure) {
    client_.respond({.chunks = {"[1,", "2]"}});
    client_.fail("read", HTTP_ERROR_CONNECTION_BROKEN, 2);

    const Fetched fetched = fetch();
    EXPECT_FALSE(fetched.succeeded);
    EXPECT_EQ(fetched.output, RETRIEVED + "Error 12030 in WinHttpReadData.\n");
    EXPECT_EQ(client_.calls(),
              OPEN + "send\nstatus\navailable\nread 3\navailable\nread 2\nclose\n");
}

TEST_F(Body, OfAnErrorResponseThatBreaksOffIsAFailureToo) {
    client_.respond({.status = 404, .chunks = {"not here"}});
    client_.fail("read", HTTP_ERROR_CONNECTION_BROKEN);

    EXPECT_EQ(fetch(), (Fetched{false, "",
                                "Error. Status code 404 returned.\n"
                                "Error 12030 in WinHttpReadData.\n"}));
}

}  // namespace
}  // namespace intake
