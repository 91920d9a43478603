#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

const std::string FETCH = "send\nstatus\navailable\nclose\n";

class CustomHeaders : public FetchTest {
protected:
    CustomHeaders() { client_.respond({}); }
};

TEST_F(CustomHeaders, AreAddedInOneCallAsTheyStand) {
    request_.useCustomHeaders = 1;
    request_.customHeaders = "X-Desk: 7\r\nX-Show:  late news \nX-Desk: 8\r\n\r\n";

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(),
              OPEN + "addHeaders 'X-Desk: 7\r\nX-Show:  late news \nX-Desk: 8\r\n\r\n'\n" + FETCH);
}

TEST_F(CustomHeaders, AnySwitchValueButZeroSwitchesThemOn) {
    request_.useCustomHeaders = -1;
    request_.customHeaders = "X-Desk: 7";

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + "addHeaders 'X-Desk: 7'\n" + FETCH);
}

TEST_F(CustomHeaders, ThatAreSwitchedOffAreNotAdded) {
    request_.customHeaders = "X-Desk: 7";

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + FETCH);
}

TEST_F(CustomHeaders, ThatAreEmptyAreNotAdded) {
    request_.useCustomHeaders = 1;

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + FETCH);
}

TEST_F(CustomHeaders, AreAddedBeforeTheProxyIsSetUp) {
    request_.useCustomHeaders = 1;
    request_.customHeaders = "X-Desk: 7";
    request_.enableProxy = true;
    request_.proxyMode = 2;
    request_.proxyUrl = "proxy:3128";

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "addHeaders 'X-Desk: 7'\n"
                                   "setProxy 'proxy:3128' bypass '<local>'\n"
                                   "setProxyUser ''\nsetProxyPassword ''\n" +
                                   FETCH);
}

TEST_F(CustomHeaders, AreAddedOnceHoweverOftenTheRequestIsSent) {
    client_ = {};
    client_.respond({.status = 401, .offered = HTTP_BASIC});
    client_.respond({});
    request_.useCustomHeaders = 1;
    request_.customHeaders = "X-Desk: 7";

    EXPECT_EQ(fetch(), (Fetched{true, "", SERVER_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "addHeaders 'X-Desk: 7'\n"
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic '' ''\n" +
                                   FETCH);
}

TEST_F(CustomHeaders, ThatAreRefusedAreLeftOutAndTheDebuggerSeesWhy) {
    request_.useCustomHeaders = 1;
    request_.customHeaders = "no header";
    client_.fail("addHeaders", HTTP_ERROR_INVALID_PARAMETER);

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + "addHeaders 'no header'\n" + FETCH);
    EXPECT_EQ(diagnostics_.debugText(), "ERROR: RDR_HTTP: the request's error 87\n");
}

}  // namespace
}  // namespace intake
