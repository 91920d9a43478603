#include "tests/platform/windows/winhttp/WinHttpTest.h"

namespace intake {
namespace {

TEST_F(WinHttpTest, ABodyIsReadChunkByChunkAndEveryHandleIsClosed) {
    system_.chunks = {"[1,", "2]"};

    EXPECT_TRUE(fetch());
    EXPECT_EQ(std::string(body_.data(), body_.size()), "[1,2]");
    EXPECT_EQ(output_, "The resource was successfully retrieved.\n");
    EXPECT_EQ(system_.calls(), OPEN + SEND +
                                   "WinHttpQueryDataAvailable(request)\n"
                                   "WinHttpReadData(request, 0x3)\n"
                                   "WinHttpQueryDataAvailable(request)\n"
                                   "WinHttpReadData(request, 0x2)\n" +
                                   NO_MORE + CLOSE);
}

TEST_F(WinHttpTest, AnHttpsUrlIsFetchedBySecureRequest) {
    EXPECT_TRUE(fetch("https://www.example.com:8443/a?b=c"));
    EXPECT_EQ(system_.calls(),
              "WinHttpOpen(\"NXR/1.0\", 0x0, null, null, 0x0)\n"
              "WinHttpSetOption(session, 0x54, 0x2800)\n"
              "WinHttpConnect(session, \"www.example.com\", 8443, 0x0)\n"
              "WinHttpOpenRequest(connection, \"GET\", \"/a?b=c\", null, null, null, 0x800000)\n" +
                  SEND + NO_MORE + CLOSE);
}

TEST_F(WinHttpTest, WhereTheSystemDoesNotKnowTls13ItIsAskedForTls12) {
    system_.fail("WinHttpSetOption");

    EXPECT_TRUE(fetch());
    EXPECT_TRUE(
        system_.calls().starts_with("WinHttpOpen(\"NXR/1.0\", 0x0, null, null, 0x0)\n"
                                    "WinHttpSetOption(session, 0x54, 0x2800)\n"
                                    "WinHttpSetOption(session, 0x54, 0x800)\n"
                                    "WinHttpConnect("))
        << system_.calls();
}

TEST_F(WinHttpTest, CustomHeadersAreAddedInOneCallThatAddsAndReplaces) {
    request_.useCustomHeaders = 1;
    request_.customHeaders =
        "X-Desk: 7\nX-Show: Fu\xC3\x9F"
        "ball";

    expectSetUp(
        "WinHttpAddRequestHeaders(request, \"X-Desk: 7\nX-Show: Fu\xC3\x9F"
        "ball\", 0xffffffff, "
        "0xa0000000)\n");
}

TEST_F(WinHttpTest, AServerThatAsksGetsTheCredentials) {
    system_.statuses = {401, 200};
    system_.schemes = 0x1B;  // all but Passport
    request_.useAuth = true;
    request_.userName = "J\xC3\xBCrg";
    request_.password = "secret";

    EXPECT_TRUE(fetch());
    EXPECT_EQ(system_.calls(),
              OPEN + SEND +
                  "WinHttpQueryAuthSchemes(request)\n"
                  "WinHttpSetCredentials(request, 0x0, 0x1, \"J\xC3\xBCrg\", \"secret\", null)\n" +
                  SEND + NO_MORE + CLOSE);
}

TEST_F(WinHttpTest, AProxyThatAsksGetsItsCredentials) {
    system_.statuses = {407, 200};
    system_.schemes = 0x0A;  // NTLM and Digest
    system_.target = 1;
    useProxy(2);

    EXPECT_TRUE(fetch());
    EXPECT_EQ(system_.calls(),
              OPEN + MANUAL_PROXY + SEND +
                  "WinHttpQueryAuthSchemes(request)\n"
                  "WinHttpSetCredentials(request, 0x1, 0x2, \"pat\", \"hidden\", null)\n" +
                  SEND + NO_MORE + CLOSE);
}

TEST_F(WinHttpTest, AProxyThatAsksForTheServersCredentialsGetsThem) {
    system_.statuses = {401, 200};
    system_.schemes = 0x10;
    system_.target = 1;

    EXPECT_TRUE(fetch());
    EXPECT_EQ(system_.calls(), OPEN + SEND +
                                   "WinHttpQueryAuthSchemes(request)\n"
                                   "WinHttpSetCredentials(request, 0x1, 0x10, \"\", \"\", null)\n" +
                                   SEND + NO_MORE + CLOSE);
}

TEST_F(WinHttpTest, HeadersThatCannotBeAddedAreLeftOut) {
    request_.useCustomHeaders = 1;
    request_.customHeaders = "no header";
    system_.fail("WinHttpAddRequestHeaders");

    expectSetUp("WinHttpAddRequestHeaders(request, \"no header\", 0xffffffff, 0xa0000000)\n");
    EXPECT_NE(diagnostics_.debugText(), "");
}

TEST_F(WinHttpTest, TheResendErrorOfEitherHalfOfAnAttemptSendsAgain) {
    system_.fail("WinHttpReceiveResponse", 1, HTTP_ERROR_RESEND_REQUEST);

    expectSetUp(
        "WinHttpSendRequest(request, null, 0x0, null, 0x0, 0x0)\n"
        "WinHttpReceiveResponse(request, null)\n");
}

TEST_F(WinHttpTest, EveryFetchHasASessionOfItsOwn) {
    system_.statuses = {200, 200};

    EXPECT_TRUE(fetch());
    EXPECT_TRUE(fetch());
    const std::string once = OPEN + SEND + NO_MORE + CLOSE;
    EXPECT_EQ(system_.calls(), once + once);
}

}  // namespace
}  // namespace intake
