#include "platform/linux/curl/curl_errors.h"

#include <gtest/gtest.h>

namespace intake {

namespace {

struct Number {
    CURLcode curl;
    uint32_t error;
};

TEST(CurlErrors, HaveTheNumbersOfTheMessages) {
    constexpr Number NUMBERS[] = {
        {CURLE_OPERATION_TIMEDOUT, 12002},
        {CURLE_URL_MALFORMAT, 12005},
        {CURLE_COULDNT_RESOLVE_HOST, 12007},
        {CURLE_COULDNT_RESOLVE_PROXY, 12007},
        {CURLE_COULDNT_CONNECT, 12029},
        {CURLE_PARTIAL_FILE, 12030},
        {CURLE_SEND_ERROR, 12030},
        {CURLE_RECV_ERROR, 12030},
        {CURLE_GOT_NOTHING, 12030},
        {CURLE_WEIRD_SERVER_REPLY, 12152},
        {CURLE_TOO_MANY_REDIRECTS, 12156},
        {CURLE_PEER_FAILED_VERIFICATION, 12175},
        {CURLE_SSL_CONNECT_ERROR, 12175},
        {CURLE_SSL_CACERT_BADFILE, 12175},
        {CURLE_PROXY, 12029},
        {CURLE_UNSUPPORTED_PROTOCOL, 12152},
        {CURLE_SSL_CERTPROBLEM, 12175},
        {CURLE_SSL_CIPHER, 12175},
        {CURLE_SSL_SHUTDOWN_FAILED, 12175},
        {CURLE_SSL_CRL_BADFILE, 12175},
        {CURLE_SSL_ISSUER_ERROR, 12175},
        {CURLE_SSL_INVALIDCERTSTATUS, 12175},
        {CURLE_SSL_ENGINE_INITFAILED, 12175},
        {CURLE_USE_SSL_FAILED, 12175},
        {CURLE_OUT_OF_MEMORY, 12004},
    };
    for (const Number& each : NUMBERS) {
        EXPECT_EQ(toHttpError(each.curl), each.error) << curl_easy_strerror(each.curl);
    }
}

TEST(CurlErrors, SayOfAConnectionThatWasEndedAtOnceWhatThatMayMean) {
    EXPECT_EQ(
        trueReason("getpeername() failed with errno 107: Transport endpoint is not connected"),
        "The server ended the connection as soon as it was made; it may ask for a "
        "certificate of the client");
    EXPECT_EQ(trueReason("Empty reply from server"), "Empty reply from server");
}

}  // namespace

}  // namespace intake
