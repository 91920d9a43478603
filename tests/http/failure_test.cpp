// Fetches that never reach a server, and the numbers of their failures.

#include "platform/linux/curl_errors.h"
#include "tests/http/support/HttpTest.h"
#include "tests/http/support/loopback.h"

namespace intake {

namespace {

using HttpFailureTest = HttpTest;

TEST_F(HttpFailureTest, ARefusedConnectionIsError12029AndTheReasonNamesHostAndPort) {
    const std::string port = std::to_string(freePort());

    const Fetched fetched = fetch("http://127.0.0.1:" + port + "/");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12029));
    EXPECT_THAT(fetched.err, testing::StartsWith(
                                 "ERROR: RDR_HTTP: Failed to connect to 127.0.0.1 port " + port));
}

TEST_F(HttpFailureTest, ANameThatIsNotResolvedIsError12007AndTheReasonNamesIt) {
    const Fetched fetched = fetch("http://no-such-host.invalid/");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12007));
    EXPECT_EQ(fetched.err, "ERROR: RDR_HTTP: Could not resolve host: no-such-host.invalid\n");
}

TEST_F(HttpFailureTest, AUrlWithoutAHostFails) {
    const Fetched fetched = fetch("http:///data.json");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12005));
}

struct Number {
    CURLcode curl;
    uint32_t error;
};

TEST(HttpErrors, HaveTheirNumbers) {
    constexpr Number NUMBERS[] = {
        {CURLE_OPERATION_TIMEDOUT, 12002},   {CURLE_URL_MALFORMAT, 12005},
        {CURLE_COULDNT_RESOLVE_HOST, 12007}, {CURLE_COULDNT_RESOLVE_PROXY, 12007},
        {CURLE_COULDNT_CONNECT, 12029},      {CURLE_PARTIAL_FILE, 12030},
        {CURLE_SEND_ERROR, 12030},           {CURLE_RECV_ERROR, 12030},
        {CURLE_GOT_NOTHING, 12030},          {CURLE_WEIRD_SERVER_REPLY, 12152},
        {CURLE_TOO_MANY_REDIRECTS, 12156},   {CURLE_PEER_FAILED_VERIFICATION, 12175},
        {CURLE_SSL_CONNECT_ERROR, 12175},    {CURLE_SSL_CACERT_BADFILE, 12175},
        {CURLE_OUT_OF_MEMORY, 12004},
    };
    for (const Number& each : NUMBERS) {
        EXPECT_EQ(toHttpError(each.curl), each.error) << curl_easy_strerror(each.curl);
    }
}

}  // namespace

}  // namespace intake
