#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

using HttpResponse = FetchTest;

TEST_F(HttpResponse, AStatusOf200GivesTheBody) {
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", "The resource was successfully retrieved.\n"}));
    EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\navailable\nread 3\navailable\nclose\n");
    EXPECT_EQ(diagnostics_.debugText(), "");
    EXPECT_EQ(log(), "");
}

TEST_F(HttpResponse, AnyOtherStatusIsNoFailureAndItsBodyIsKept) {
    for (const int status : {100, 201, 204, 301, 400, 403, 404, 500, 503}) {
        client_ = {};
        client_.respond({.status = status, .chunks = {"not here"}});

        EXPECT_EQ(fetch(),
                  (Fetched{true, "not here",
                           "Error. Status code " + std::to_string(status) + " returned.\n"}));
        EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\navailable\nread 8\navailable\nclose\n");
    }
}

TEST_F(HttpResponse, AnHttpsUrlOpensASecureRequestToPort443) {
    client_.respond({});

    EXPECT_EQ(fetch("https://www.example.com/a?b=c"), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(),
              "open 'www.example.com' port 443 secure path '/a?b=c' agent 'NXR/1.0'\n"
              "send\nstatus\navailable\nclose\n");
}

TEST_F(HttpResponse, AHostThatCarries8080IsConnectedToAtPort8080) {
    client_.respond({});

    EXPECT_EQ(fetch("http://www.example.com:8080/feed.json"), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(),
              "open 'www.example.com' port 8080 path '/feed.json' agent 'NXR/1.0'\n"
              "send\nstatus\navailable\nclose\n");
}

TEST_F(HttpResponse, APortThatIsNoNumberFailsBeforeAnythingIsOpened) {
    ByteBuffer body;
    try {
        transport_.Fetch("http://www.example.com:http/feed.json", request_, body);
        FAIL() << "a port was made of letters";
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "invalid stoi argument");
    }
    EXPECT_EQ(client_.calls(), "");
    EXPECT_EQ(body.size(), 0U);
}

TEST_F(HttpResponse, TheBodyIsAddedToWhatIsInTheBufferAlready) {
    client_.respond({.chunks = {"two"}});
    ByteBuffer body;
    *body.prepare(1) = '1';
    body.commit(1);

    testing::internal::CaptureStdout();
    EXPECT_TRUE(transport_.Fetch("http://www.example.com/feed.json", request_, body));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), RETRIEVED);
    EXPECT_EQ(std::string(body.data(), body.size()), "1two");
}

TEST_F(HttpResponse, EveryFetchOpensARequestOfItsOwn) {
    client_.respond({.chunks = {"1"}});
    client_.respond({.chunks = {"2"}});

    EXPECT_EQ(fetch(), (Fetched{true, "1", RETRIEVED}));
    EXPECT_EQ(fetch(), (Fetched{true, "2", RETRIEVED}));
    const std::string once = OPEN + "send\nstatus\navailable\nread 1\navailable\nclose\n";
    EXPECT_EQ(client_.calls(), once + once);
}

}  // namespace
}  // namespace intake
