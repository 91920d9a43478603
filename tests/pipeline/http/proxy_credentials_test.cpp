#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

/// A proxy mode that sets nothing up leaves only the calls that answer a 407.
constexpr int32_t NO_MODE = 3;

class ProxyCredentials : public FetchTest {
protected:
    ProxyCredentials() {
        request_.enableProxy = true;
        request_.proxyMode = NO_MODE;
        request_.proxyUser = "pat";
        request_.proxyPwd = "hidden";
        request_.useAuth = true;
        request_.userName = "ann";
        request_.password = "secret";
    }
};

TEST_F(ProxyCredentials, AreSentWhenTheProxyAsks) {
    client_.respond({.status = 407, .offered = HTTP_NTLM, .chunks = {"who are you?"}});
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", PROXY_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse NTLM\n"
                                   "setCredentials proxy NTLM 'pat' 'hidden'\n"
                                   "send\nstatus\navailable\nread 3\navailable\nclose\n");
}

TEST_F(ProxyCredentials, GoToTheProxyWhateverTargetTheResponseNames) {
    client_.respond({.status = 407, .offered = HTTP_BASIC, .target = HttpTarget::SERVER});
    client_.respond({});

    EXPECT_EQ(fetch(), (Fetched{true, "", PROXY_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials proxy Basic 'pat' 'hidden'\n"
                                   "send\nstatus\navailable\nclose\n");
}

TEST_F(ProxyCredentials, NeedNoSwitchForTheServersCredentials) {
    request_.useAuth = false;
    client_.respond({.status = 407, .offered = HTTP_BASIC});
    client_.respond({});

    EXPECT_EQ(fetch(), (Fetched{true, "", PROXY_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials proxy Basic 'pat' 'hidden'\n"
                                   "send\nstatus\navailable\nclose\n");
}

TEST_F(ProxyCredentials, AProxyThatAnswers407TwiceInARowEndsTheLoopAfterTheSecondAnswer) {
    client_.respond({.status = 407, .offered = HTTP_BASIC, .chunks = {"first"}});
    client_.respond({.status = 407, .offered = HTTP_BASIC, .chunks = {"second"}});

    EXPECT_EQ(fetch(), (Fetched{true, "second", PROXY_ASKS + PROXY_ASKS}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials proxy Basic 'pat' 'hidden'\n"
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "available\nread 6\navailable\nclose\n");
}

TEST_F(ProxyCredentials, AreNeverSentWhileTheProxyIsOff) {
    request_.enableProxy = false;
    client_.respond({.status = 407, .offered = HTTP_BASIC, .chunks = {"first"}});
    client_.respond({.status = 407, .offered = HTTP_BASIC, .chunks = {"second"}});

    EXPECT_EQ(fetch(), (Fetched{true, "second", PROXY_ASKS + PROXY_ASKS}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "available\nread 6\navailable\nclose\n");
}

TEST_F(ProxyCredentials, AProxyThatOffersNoSchemeIsTriedAgainWithoutAny) {
    client_.respond({.status = 407, .chunks = {"first"}});
    client_.respond({.status = 407, .chunks = {"second"}});

    EXPECT_EQ(fetch(), (Fetched{true, "second", PROXY_ASKS + PROXY_ASKS}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\n"
                                   "send\nstatus\nofferedSchemes\n"
                                   "available\nread 6\navailable\nclose\n");
}

TEST_F(ProxyCredentials, AreSetAgainBeforeTheServersOwnQuestionIsAnswered) {
    client_.respond({.status = 407, .offered = HTTP_DIGEST, .target = HttpTarget::PROXY});
    client_.respond({.status = 401, .offered = HTTP_BASIC});
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", PROXY_ASKS + SERVER_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Digest\n"
                                   "setCredentials proxy Digest 'pat' 'hidden'\n"
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic 'ann' 'secret'\n"
                                   "setCredentials proxy Digest 'pat' 'hidden'\n"
                                   "send\nstatus\navailable\nread 3\navailable\nclose\n");
}

TEST_F(ProxyCredentials, AreSentWhenTheProxyAsksAfterTheServer) {
    client_.respond({.status = 401, .offered = HTTP_BASIC});
    client_.respond({.status = 407, .offered = HTTP_DIGEST, .target = HttpTarget::PROXY});
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", SERVER_ASKS + PROXY_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic 'ann' 'secret'\n"
                                   "send\nstatus\nofferedSchemes\ncanUse Digest\n"
                                   "setCredentials proxy Digest 'pat' 'hidden'\n"
                                   "send\nstatus\navailable\nread 3\navailable\nclose\n");
}

}  // namespace
}  // namespace intake
