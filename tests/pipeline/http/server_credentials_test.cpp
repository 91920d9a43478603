#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

class ServerCredentials : public FetchTest {
protected:
    ServerCredentials() {
        request_.useAuth = true;
        request_.userName = "ann";
        request_.password = "secret";
    }
};

TEST_F(ServerCredentials, AreSentWhenTheServerAsks) {
    client_.respond({.status = 401, .offered = HTTP_BASIC, .chunks = {"who are you?"}});
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", SERVER_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic 'ann' 'secret'\n"
                                   "send\nstatus\navailable\nread 3\navailable\nclose\n");
}

TEST_F(ServerCredentials, AreNotSentUnasked) {
    client_.respond({});

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\navailable\nclose\n");
}

TEST_F(ServerCredentials, ThatAreSwitchedOffGoAsEmptyOnes) {
    request_.useAuth = false;
    client_.respond({.status = 401, .offered = HTTP_NTLM});
    client_.respond({});

    EXPECT_EQ(fetch(), (Fetched{true, "", SERVER_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse NTLM\n"
                                   "setCredentials server NTLM '' ''\n"
                                   "send\nstatus\navailable\nclose\n");
}

TEST_F(ServerCredentials, AServerThatAnswers401TwiceInARowEndsTheLoopAfterTheSecondAnswer) {
    client_.respond({.status = 401, .offered = HTTP_BASIC, .chunks = {"first"}});
    client_.respond({.status = 401, .offered = HTTP_BASIC, .chunks = {"second"}});

    EXPECT_EQ(fetch(), (Fetched{true, "second", SERVER_ASKS + SERVER_ASKS}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic 'ann' 'secret'\n"
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic 'ann' 'secret'\n"
                                   "available\nread 6\navailable\nclose\n");
}

TEST_F(ServerCredentials, AServerThatOffersNoSchemeEndsTheLoopWithItsBody) {
    client_.respond({.status = 401, .chunks = {"go away"}});

    EXPECT_EQ(fetch(), (Fetched{true, "go away", SERVER_ASKS}));
    EXPECT_EQ(client_.calls(),
              OPEN + "send\nstatus\nofferedSchemes\navailable\nread 7\navailable\nclose\n");
}

TEST_F(ServerCredentials, ASchemeThatNobodyKnowsIsAsGoodAsNone) {
    client_.respond({.status = 401, .offered = 0x20, .chunks = {"go away"}});

    EXPECT_EQ(fetch(), (Fetched{true, "go away", SERVER_ASKS}));
    EXPECT_EQ(client_.calls(),
              OPEN + "send\nstatus\nofferedSchemes\navailable\nread 7\navailable\nclose\n");
}

TEST_F(ServerCredentials, GoToTheTargetThatTheResponseNames) {
    client_.respond({.status = 401, .offered = HTTP_DIGEST, .target = HttpTarget::PROXY});
    client_.respond({});

    EXPECT_EQ(fetch(), (Fetched{true, "", SERVER_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Digest\n"
                                   "setCredentials proxy Digest 'ann' 'secret'\n"
                                   "send\nstatus\navailable\nclose\n");
}

TEST_F(ServerCredentials, AnotherStatusBehindA401EndsTheLoop) {
    client_.respond({.status = 401, .offered = HTTP_BASIC});
    client_.respond({.status = 403, .chunks = {"not you"}});

    EXPECT_EQ(fetch(),
              (Fetched{true, "not you", SERVER_ASKS + "Error. Status code 403 returned.\n"}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic 'ann' 'secret'\n"
                                   "send\nstatus\navailable\nread 7\navailable\nclose\n");
}

TEST_F(ServerCredentials, ARefusalInOneFetchIsForgottenInTheNext) {
    for (int answer = 0; answer < 3; ++answer) {
        client_.respond({.status = 401, .offered = HTTP_BASIC, .chunks = {"no"}});
    }
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "no", SERVER_ASKS + SERVER_ASKS}));
    EXPECT_EQ(fetch(), (Fetched{true, "[1]", SERVER_ASKS + RETRIEVED}));
}

}  // namespace
}  // namespace intake
