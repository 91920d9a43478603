// Why a fetch fails, as a debugger is told: on Linux in libcurl's words, on standard error.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/loopback.h"

namespace intake {

namespace {

using HttpReasonTest = HttpTest;

TEST_F(HttpReasonTest, OfARefusedConnectionNamesHostAndPort) {
    const std::string port = std::to_string(freePort());

    const std::string reason = fetch("http://127.0.0.1:" + port + "/").err;

    EXPECT_TRUE(reason.starts_with("ERROR: RDR_HTTP: Failed to connect to 127.0.0.1 port " + port))
        << reason;
}

TEST_F(HttpReasonTest, OfANameThatIsNotResolvedNamesIt) {
    EXPECT_EQ(fetch("http://no-such-host.invalid/").err,
              "ERROR: RDR_HTTP: Could not resolve host: no-such-host.invalid\n");
}

TEST_F(HttpReasonTest, OfANameBeyondAsciiNamesItAsNameServersKnowIt) {
    const Fetched fetched = fetch("http://b\u00FCcher.invalid/");
    EXPECT_EQ(fetched.out, error(12007));
    EXPECT_EQ(fetched.err, "ERROR: RDR_HTTP: Could not resolve host: xn--bcher-kva.invalid\n");
}

TEST_F(HttpReasonTest, OfAConnectionThatIsCutSaysSo) {
    ScriptedServer server({{"", Then::CLOSE}, {"", Then::CLOSE}});

    EXPECT_EQ(fetch(server.url("/")).err, "ERROR: RDR_HTTP: Empty reply from server\n");
}

TEST_F(HttpReasonTest, OfAResponseWithTooLongALineSaysSo) {
    const auto line = [](size_t length) { return "X-A: " + std::string(length, 'x') + "\r\n"; };
    ScriptedServer server(
        {reply("200 OK", "[1]", line(100'000)), reply("200 OK", "", line(110'000))});

    EXPECT_EQ(fetch(server.url("/")).body, "[1]");
    EXPECT_EQ(fetch(server.url("/")).err,
              "ERROR: RDR_HTTP: The header of the response has a line of more than 100 KB, or "
              "there is not enough memory\n");
}

TEST_F(HttpReasonTest, OfAHeaderLineWithoutAColonQuotesIt) {
    ScriptedServer server({reply("200 OK", "[1]")});
    request_.useCustomHeaders = 1;
    request_.customHeaders = "no header at all";

    EXPECT_EQ(fetch(server.url("/")).err,
              "ERROR: RDR_HTTP: A header line without a colon: no header at all\n");
}

TEST_F(HttpReasonTest, OfAProxyWithoutAnAddressSaysSo) {
    useProxy(MANUAL, "");

    EXPECT_EQ(fetch("http://127.0.0.1:1/").err, "ERROR: RDR_HTTP: The proxy has no address\n");
}

}  // namespace

}  // namespace intake
