#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

class FailingCall : public FetchTest {
protected:
    /// The fetch failed at a step and said so, to the user by number and to the debugger by reason.
    void expectFailure(const Fetched& fetched, const std::string& output,
                       const std::string& reason) const {
        EXPECT_EQ(fetched, (Fetched{false, "", output}));
        EXPECT_EQ(diagnostics_.debugText(), "ERROR: RDR_HTTP: " + reason + "\n");
    }

    void useManualProxy() {
        request_.enableProxy = true;
        request_.proxyMode = 2;
        request_.proxyUrl = "proxy:3128";
        request_.proxyUser = "pat";
        request_.proxyPwd = "hidden";
    }
};

const std::string MANUAL_PROXY = "setProxy 'proxy:3128' bypass '<local>'\n";

TEST_F(FailingCall, ARequestThatCannotBeOpened) {
    client_.fail("open", HTTP_ERROR_INVALID_URL);

    expectFailure(fetch(), "Error 12005 has occurred.\n", "the client's error 12005");
    EXPECT_EQ(client_.calls(), OPEN);
}

TEST_F(FailingCall, AManualProxyThatCannotBeSet) {
    useManualProxy();
    client_.fail("setProxy", HTTP_ERROR_INVALID_PARAMETER);

    expectFailure(fetch(), "Error 87 has occurred.\n", "the request's error 87");
    EXPECT_EQ(client_.calls(), OPEN + MANUAL_PROXY + "close\n");
}

TEST_F(FailingCall, AManualProxyWhoseUserCannotBeSet) {
    useManualProxy();
    client_.fail("setProxyUser", HTTP_ERROR_INTERNAL);

    expectFailure(fetch(), "Error 12004 has occurred.\n", "the request's error 12004");
    EXPECT_EQ(client_.calls(), OPEN + MANUAL_PROXY + "setProxyUser 'pat'\nclose\n");
}

TEST_F(FailingCall, AManualProxyWhosePasswordCannotBeSet) {
    useManualProxy();
    client_.fail("setProxyPassword", HTTP_ERROR_INTERNAL);

    expectFailure(fetch(), "Error 12004 has occurred.\n", "the request's error 12004");
    EXPECT_EQ(client_.calls(),
              OPEN + MANUAL_PROXY + "setProxyUser 'pat'\nsetProxyPassword 'hidden'\nclose\n");
}

TEST_F(FailingCall, ASendThatFails) {
    client_.fail("send", HTTP_ERROR_CANNOT_CONNECT);

    expectFailure(fetch(), "Error 12029 has occurred.\n", "the request's error 12029");
    EXPECT_EQ(client_.calls(), OPEN + "send\nclose\n");
}

TEST_F(FailingCall, ASendThatFailsOnceTheServerHasAsked) {
    client_.respond({.status = 401, .offered = HTTP_BASIC, .chunks = {"who are you?"}});
    client_.fail("send", HTTP_ERROR_TIMEOUT, 2);

    expectFailure(fetch(), SERVER_ASKS + "Error 12002 has occurred.\n",
                  "the request's error 12002");
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic '' ''\nsend\nclose\n");
}

TEST_F(FailingCall, AStatusThatCannotBeRead) {
    client_.respond({});
    client_.fail("status", HTTP_ERROR_INVALID_SERVER_RESPONSE);

    expectFailure(fetch(), "Error 12152 has occurred.\n", "the request's error 12152");
    EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\nclose\n");
}

TEST_F(FailingCall, TheServersSchemesThatCannotBeRead) {
    client_.respond({.status = 401, .offered = HTTP_BASIC});
    client_.fail("offeredSchemes", HTTP_ERROR_INTERNAL);

    expectFailure(fetch(), SERVER_ASKS + "Error 12004 has occurred.\n",
                  "the request's error 12004");
    EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\nofferedSchemes\nclose\n");
}

TEST_F(FailingCall, TheProxysSchemesThatCannotBeRead) {
    client_.respond({.status = 407, .offered = HTTP_BASIC});
    client_.fail("offeredSchemes", HTTP_ERROR_INTERNAL);

    expectFailure(fetch(), PROXY_ASKS + "Error 12004 has occurred.\n", "the request's error 12004");
    EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\nofferedSchemes\nclose\n");
}

TEST_F(FailingCall, TheServersCredentialsThatCannotBeSet) {
    client_.respond({.status = 401, .offered = HTTP_BASIC});
    client_.fail("setCredentials", HTTP_ERROR_INTERNAL);

    expectFailure(fetch(), SERVER_ASKS + "Error 12004 has occurred.\n",
                  "the request's error 12004");
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic '' ''\nclose\n");
}

TEST_F(FailingCall, TheProxysCredentialsThatCannotBeSet) {
    request_.enableProxy = true;
    request_.proxyMode = 3;
    client_.respond({.status = 407, .offered = HTTP_BASIC});
    client_.fail("setCredentials", HTTP_ERROR_INTERNAL);

    expectFailure(fetch(), PROXY_ASKS + "Error 12004 has occurred.\n", "the request's error 12004");
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials proxy Basic '' ''\nclose\n");
}

TEST_F(FailingCall, ABodyThatDoesNotBecomeAvailable) {
    client_.respond({.chunks = {"[1]"}});
    client_.fail("available", HTTP_ERROR_TIMEOUT);

    expectFailure(fetch(), RETRIEVED + "Error 12002 in WinHttpQueryDataAvailable.\n",
                  "the request's error 12002");
    EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\navailable\nclose\n");
}

TEST_F(FailingCall, ABodyThatCannotBeRead) {
    client_.respond({.chunks = {"[1]"}});
    client_.fail("read", HTTP_ERROR_CONNECTION_BROKEN);

    expectFailure(fetch(), RETRIEVED + "Error 12030 in WinHttpReadData.\n",
                  "the request's error 12030");
    EXPECT_EQ(client_.calls(), OPEN + "send\nstatus\navailable\nread 3\nclose\n");
}

TEST_F(FailingCall, NothingIsPrintedInAProcessWithoutAStandardOutput) {
    diagnostics_.setHasConsole(false);
    client_.fail("send", HTTP_ERROR_CANNOT_CONNECT);

    expectFailure(fetch(), "", "the request's error 12029");
}

TEST_F(FailingCall, OfALoadThatWasGivenUpIsToldToNobody) {
    client_.fail("send", HTTP_ERROR_OPERATION_CANCELLED);

    EXPECT_EQ(fetch(), (Fetched{false, "", ""}));
    EXPECT_EQ(diagnostics_.debugText(), "");
}

}  // namespace
}  // namespace intake
