// What `explain` says of proxies.

#include "tests/http/support/ForwardProxy.h"
#include "tests/http/support/WebServer.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/loopback.h"
#include "tests/workbench/cli/linux/NetworkTest.h"

using intake::reply;
using intake::ScriptedServer;

namespace {

/// A proxy that is set by hand.
class ExplainedThroughProxy : public ExplainedUrl {
protected:
    void expectThrough(const std::string& proxy, const Settings& settings,
                       const std::string& text) const {
        expectOf("http://data.example/clubs",
                 joined({"enableProxy=1", "proxyMode=2", "proxyUrl=" + proxy}, settings), text);
    }
};

}  // namespace

TEST_F(ExplainedThroughProxy, ThatLoadsHasATickAtEachStage) {
    ScriptedServer proxy(always(reply("200 OK", clubs, isJson)));
    expectThrough(proxy.address(), {}, R"(
http://data.example/clubs: 2 records, # s
  ✓ settings
  ✓ address   http://data.example/clubs
  ✓ fetched   200, application/json, 54 bytes, # ms
  ✓ format    JSON
  ✓ selection *: 2 objects
  ✓ key       id
  ✓ rows      all 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedThroughProxy, ThatIsDownIsTold) {
    expectThrough("127.0.0.1:" + std::to_string(intake::freePort()), {}, R"(
http://data.example/clubs: no records, # s
  ✓ settings
  ✗ address   http://data.example/clubs
              The source cannot be asked for: no proxy answers at SERVER.
              Check "Proxy URL" (proxyUrl) and that the proxy runs, or switch "Proxy on/off" (enableProxy) off.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedThroughProxy, WithoutAnAddressIsTold) {
    expectThrough("", {}, R"(
http://data.example/clubs: no records, # s
  ✓ settings
  ✗ address   http://data.example/clubs
              The source cannot be asked for: a proxy is switched on that has no address.
              Set "Proxy URL" (proxyUrl), or switch "Proxy on/off" (enableProxy) off.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedThroughProxy, ThatAsksForALoginIsTold) {
    ScriptedServer proxy(always(intake::proxyChallenge({intake::BASIC})));
    expectThrough(proxy.address(), {}, R"(
http://data.example/clubs: no records, # s
  ✓ settings
  ✓ address   http://data.example/clubs
  ✗ fetched   407, 0 bytes, # ms
              The proxy answers with status 407 and nothing. It asks for a login.
              Set "Proxy User Name" (proxyUser) and "Proxy Password" (proxyPwd).
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedThroughProxy, ThatRefusesTheLoginIsToldItOnce) {
    ScriptedServer proxy(always(intake::proxyChallenge({intake::BASIC})));
    const Settings proxyLogin{"proxyUser=ada", "proxyPwd=s3cret-word"};
    expectThrough(proxy.address(), proxyLogin, R"(
http://data.example/clubs: not loaded, # s
  ✓ settings
  ✓ address   http://data.example/clubs
  ✗ fetched   407, 0 bytes, # ms
              The proxy answers with status 407 and nothing. It refuses the user name or the password. They were not sent again: accounts lock after a few times.
              Set "Proxy User Name" (proxyUser) and "Proxy Password" (proxyPwd).
  – format, selection, key, rows, script, store: not reached
)");
    EXPECT_EQ(countOf(intake::proxyProofs(proxy)), 2U);  // as text and as JSON, once each
}
