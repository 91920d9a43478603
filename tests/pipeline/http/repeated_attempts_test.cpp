#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

/// Attempts of one fetch, at most.
constexpr int MOST_ATTEMPTS = 32;

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int count = 0; count < times; ++count) {
        all += text;
    }
    return all;
}

using RepeatedAttempts = FetchTest;

TEST_F(RepeatedAttempts, TheResendErrorSendsAgain) {
    client_.fail("send", HTTP_ERROR_RESEND_REQUEST);
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + "send\nsend\nstatus\navailable\nread 3\navailable\nclose\n");
    EXPECT_EQ(diagnostics_.debugText(), "");
}

TEST_F(RepeatedAttempts, TheResendErrorMayComeManyTimes) {
    client_.fail("send", HTTP_ERROR_RESEND_REQUEST, 1, MOST_ATTEMPTS - 1);
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + repeated("send\n", MOST_ATTEMPTS) +
                                   "status\navailable\nread 3\navailable\nclose\n");
}

TEST_F(RepeatedAttempts, TheResendErrorWithoutEndFails) {
    client_.fail("send", HTTP_ERROR_RESEND_REQUEST, 1, 1000);

    EXPECT_EQ(fetch(), (Fetched{false, "", "Error 12032 has occurred.\n"}));
    EXPECT_EQ(client_.calls(), OPEN + repeated("send\n", MOST_ATTEMPTS) + "close\n");
    EXPECT_EQ(diagnostics_.debugText(), "ERROR: RDR_HTTP: the request's error 12032\n");
}

TEST_F(RepeatedAttempts, TheResendErrorAfterA401SendsTheCredentialsAgain) {
    client_.fail("send", HTTP_ERROR_RESEND_REQUEST, 2);
    client_.respond({.status = 401, .offered = HTTP_NTLM});
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", SERVER_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse NTLM\n"
                                   "setCredentials server NTLM '' ''\n"
                                   "send\nsend\nstatus\navailable\nread 3\navailable\nclose\n");
}

TEST_F(RepeatedAttempts, TheResendErrorBetweenTwo401DoesNotHideTheRefusal) {
    client_.fail("send", HTTP_ERROR_RESEND_REQUEST, 2);
    client_.respond({.status = 401, .offered = HTTP_NTLM, .chunks = {"first"}});
    client_.respond({.status = 401, .offered = HTTP_NTLM, .chunks = {"second"}});

    EXPECT_EQ(fetch(), (Fetched{true, "second", SERVER_ASKS + SERVER_ASKS}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse NTLM\n"
                                   "setCredentials server NTLM '' ''\n"
                                   "send\nsend\nstatus\nofferedSchemes\ncanUse NTLM\n"
                                   "setCredentials server NTLM '' ''\n"
                                   "available\nread 6\navailable\nclose\n");
}

TEST_F(RepeatedAttempts, ServerAndProxyThatAskInTurnWithoutEndAreGivenUpWithTheLastBody) {
    for (int pair = 0; pair < MOST_ATTEMPTS; ++pair) {
        client_.respond({.status = 401, .offered = HTTP_BASIC, .chunks = {"server"}});
        client_.respond({.status = 407, .offered = HTTP_BASIC, .chunks = {"the proxy"}});
    }

    EXPECT_EQ(fetch(),
              (Fetched{true, "the proxy", repeated(SERVER_ASKS + PROXY_ASKS, MOST_ATTEMPTS / 2)}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   repeated("send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                            "setCredentials server Basic '' ''\n"
                                            "send\nstatus\nofferedSchemes\ncanUse Basic\n",
                                            MOST_ATTEMPTS / 2) +
                                   "available\nread 9\navailable\nclose\n");
}

}  // namespace
}  // namespace intake
