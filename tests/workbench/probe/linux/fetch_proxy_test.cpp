// Through a proxy, and why not.

#include "tests/http/support/ForwardProxy.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/linux/StalledProxyScript.h"
#include "tests/http/support/linux/tls.h"
#include "tests/http/support/loopback.h"
#include "tests/workbench/probe/linux/FetchTest.h"
#include "workbench/probe/explain/look_at_source.h"
#include "workbench/probe/explore/explore_source.h"

namespace probe {

namespace {

using intake::EnvironmentVariable;

class FetchedThroughProxy : public FetchTest {
protected:
    static Settings through(const std::string& proxy, const std::string& url) {
        Settings settings = settingsFor(QueryType::Json, url);
        settings.enableProxy = true;
        settings.proxyMode = ProxyMode::Manual;
        settings.proxyUrl = proxy;
        return settings;
    }
    static Settings throughSystems(const std::string& url) {
        Settings settings = through("", url);
        settings.proxyMode = ProxyMode::System;
        return settings;
    }
    static bool isThroughTinyproxy(ScriptedServer& server) {
        return server.requests().at(0).find("tinyproxy") != std::string::npos;
    }
};

TEST_F(FetchedThroughProxy, GoesThroughTheManualOne) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const intake::ForwardProxy proxy;
    EXPECT_EQ(fetch(through(proxy.address(), server.url("/")), patience).body, "[1]");
    EXPECT_TRUE(isThroughTinyproxy(server));
}

TEST_F(FetchedThroughProxy, GoesThroughThatOfTheSystem) {
    const intake::ForwardProxy proxy;
    const EnvironmentVariable ofSystem("http_proxy", "http://" + proxy.address());
    for (const ProxyMode mode : {ProxyMode::System, ProxyMode::AutoDetect}) {
        ScriptedServer server({reply("200 OK", "[1]")});
        Settings settings = through("", server.url("/"));
        settings.proxyMode = mode;
        EXPECT_EQ(fetch(settings, patience).body, "[1]");
        EXPECT_TRUE(isThroughTinyproxy(server));
    }
}

TEST_F(FetchedThroughProxy, GoesThroughThatOfTheSystemWithoutAScheme) {
    const intake::ForwardProxy proxy;
    const EnvironmentVariable ofSystem("http_proxy", proxy.address());
    ScriptedServer server({reply("200 OK", "[1]")});
    EXPECT_EQ(fetch(throughSystems(server.url("/")), patience).body, "[1]");
    EXPECT_TRUE(isThroughTinyproxy(server));
}

TEST_F(FetchedThroughProxy, GoesThroughNoneToExceptionsOfThatOfTheSystem) {
    for (const char* proxy : {"127.0.0.1:1", "http://127.0.0.1:1"}) {
        const EnvironmentVariable ofSystem("http_proxy", proxy);
        for (const char* exceptions : {"*", "other.example,127.0.0.1"}) {
            const EnvironmentVariable except("no_proxy", exceptions);
            ScriptedServer server({reply("200 OK", "[1]")});
            EXPECT_EQ(fetch(throughSystems(server.url("/")), patience).body, "[1]");
        }
    }
}

TEST_F(FetchedThroughProxy, IsNotThroughTheSystemsWhenAnExceptionIsDown) {
    const EnvironmentVariable ofSystem("http_proxy", "127.0.0.2:1");
    const std::string port = ":" + std::to_string(intake::freePort());
    for (const auto& [host, exceptions] : std::vector<std::pair<std::string, const char*>>{
             {"data.localhost", "other.example,*.localhost"},
             {"127.0.0.1", "127.0.0.1"},
             {"127.0.0.1", "10.0.0.0/8,127.0.0.0/8"},
             {"[::1]", "::/64"}}) {
        const EnvironmentVariable except("no_proxy", exceptions);
        const FetchFailure failure = failureOf(throughSystems("http://" + host + port + "/"));
        EXPECT_EQ(failure.what(),
                  "cannot be reached: nothing answers at that address (" + host + port + ")");
    }
}

TEST_F(FetchedThroughProxy, IsThroughTheSystemsWhenTheServerIsInNoNetworkThatIsExcepted) {
    const EnvironmentVariable ofSystem("http_proxy", "127.0.0.2:1");
    for (const char* exceptions : {"127.1.0.0/16", "127.0.0.2/0", "0.0.1", "::/0"}) {
        const EnvironmentVariable except("no_proxy", exceptions);
        EXPECT_STREQ(failureOf(throughSystems("http://127.0.0.1:1/")).what(),
                     "cannot be asked for: no proxy answers at 127.0.0.2:1")
            << exceptions;
    }
}

TEST_F(FetchedThroughProxy, GoesThroughNoneWhenTheSystemDoesNotSayInTime) {
    const intake::StalledProxyScript script;
    ScriptedServer server({reply("200 OK", "[1]")});
    const Fetched fetched = fetch(throughSystems(server.url("/")), 2);
    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_TRUE(fetched.isProxyUnknown);
}

TEST_F(FetchedThroughProxy, IsWarnedOfWhenTheSystemDoesNotSayInTime) {
    const intake::StalledProxyScript script;
    ScriptedServer server({reply("200 OK", "[1]")});
    const Ladder ladder = lookAtSource(throughSystems(server.url("/")), 2, false);
    EXPECT_EQ(ladder.at(Stage::Address).state, State::Warning);
    EXPECT_EQ(ladder.at(Stage::Address).cause,
              "The system does not say in time which proxy to use. The plugin searches for 30 "
              "seconds and then loads without one.");
    EXPECT_EQ(ladder.at(Stage::Fetched).state, State::Ok);
}

TEST_F(FetchedThroughProxy, IsToldToWantOneWhenTheSystemDoesNotSayInTimeAndNothingAnswers) {
    const intake::StalledProxyScript script;
    const std::string server = "127.0.0.1:" + std::to_string(intake::freePort());
    const Ladder ladder = lookAtSource(throughSystems("http://" + server + "/"), 2, false);
    EXPECT_EQ(ladder.at(Stage::Address).cause,
              "The source cannot be reached: nothing answers at that address (" + server +
                  "). The system does not say in time which proxy to use. The plugin searches for "
                  "30 seconds and then loads without one.");
    EXPECT_NE(ladder.at(Stage::Address).next.find("\"Proxy URL\" (proxyUrl)"), std::string::npos);
}

TEST_F(FetchedThroughProxy, IsWarnedOfWhenTheSystemDoesNotSayInTimeAndTheServerBreaksOff) {
    const intake::StalledProxyScript script;
    ScriptedServer server(
        {intake::Reply{"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n[1]", intake::Then::CUT}});
    const Ladder ladder = lookAtSource(throughSystems(server.url("/")), 2, false);
    EXPECT_EQ(ladder.at(Stage::Address).state, State::Warning);
    EXPECT_EQ(ladder.at(Stage::Fetched).state, State::Failed);
}

TEST_F(FetchedThroughProxy, IsExploredWithAWordWhenTheSystemDoesNotSayInTime) {
    const intake::StalledProxyScript script;
    ScriptedServer server({reply("200 OK", "[1]")});
    EXPECT_EQ(exploreSource(throughSystems(server.url("/")), {}, 2).words,
              "JSON, without a proxy, since the system does not say in time which to use");
}

TEST_F(FetchedThroughProxy, GoesThroughNoneWhileItIsOffOrForOtherQueryTypes) {
    const EnvironmentVariable ofSystem("http_proxy", "http://127.0.0.1:1");
    ScriptedServer server([](const std::string&) { return reply("200 OK", "[1]"); });
    Settings off = through("127.0.0.1:1", server.url("/"));
    off.enableProxy = false;
    EXPECT_EQ(fetch(off, patience).body, "[1]");
    for (const QueryType type : {QueryType::Xml, QueryType::Html}) {
        Settings other = through("127.0.0.1:1", server.url("/"));
        other.queryMode = type;
        EXPECT_EQ(fetch(other, patience).body, "[1]");
    }
}

TEST_F(FetchedThroughProxy, ContactsAServerWithoutADotDirectly) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const std::string url = "http://localhost:" + std::to_string(server.port()) + "/";
    EXPECT_EQ(fetch(through("127.0.0.1:1", url), patience).body, "[1]");
}

TEST_F(FetchedThroughProxy, IsNotWithoutAnAddress) {
    const FetchFailure failure = failureOf(through("", "http://127.0.0.1:1/"));
    EXPECT_STREQ(failure.what(), "cannot be asked for: a proxy is switched on that has no address");
    EXPECT_EQ(failure.next,
              "Set \"Proxy URL\" (proxyUrl), or switch \"Proxy on/off\" (enableProxy) off.");
    EXPECT_EQ(failure.stage, FetchFailure::Stage::Address);
}

TEST_F(FetchedThroughProxy, IsNotWithAMalformedAddress) {
    const FetchFailure failure = failureOf(through("proxy:port", "http://127.0.0.1:1/"));
    EXPECT_STREQ(failure.what(), "cannot be asked for: the proxy has no address that can be read");
    EXPECT_EQ(failure.next, "Correct \"Proxy URL\" (proxyUrl): proxy.example:3128.");
}

TEST_F(FetchedThroughProxy, IsNotWhenItIsDown) {
    const std::string proxy = "127.0.0.1:" + std::to_string(intake::freePort());
    const FetchFailure failure =
        failureOf(through("http://me:s3cret@" + proxy, "http://data.example/"));
    EXPECT_EQ(failure.what(), "cannot be asked for: no proxy answers at " + proxy);
    EXPECT_NE(failure.next.find("\"Proxy URL\" (proxyUrl)"), std::string::npos);
    EXPECT_EQ(failure.stage, FetchFailure::Stage::Address);
}

TEST_F(FetchedThroughProxy, IsNotWhenNobodyKnowsIt) {
    const FetchFailure failure = failureOf(through("proxy.invalid:3128", "http://data.example/"));
    EXPECT_STREQ(failure.what(), "is asked for through a proxy that nobody knows: proxy.invalid");
    EXPECT_NE(failure.next.find("proxy.invalid in \"Proxy URL\" (proxyUrl)"), std::string::npos);
}

TEST_F(FetchedThroughProxy, IsAnAnswerOfTheProxyThatAsks) {
    for (const char* url : {"http://data.example/", "https://data.example/"}) {
        ScriptedServer proxy(
            [](const std::string&) { return intake::proxyChallenge({intake::BASIC}); });
        const Fetched fetched = fetch(through(proxy.address(), url), patience);
        EXPECT_EQ(fetched.status, 407) << url;
        EXPECT_FALSE(fetched.credentialsRefused);
        EXPECT_EQ(countOf(proxy, "Proxy-Authorization"), 0);
    }
}

TEST_F(FetchedThroughProxy, TellsTheProxyOnceWhoAsks) {
    for (const char* url : {"http://data.example/", "https://data.example/"}) {
        ScriptedServer proxy(
            [](const std::string&) { return intake::proxyChallenge({intake::BASIC}); });
        Settings settings = through(proxy.address(), url);
        settings.proxyUser = "ada";
        settings.proxyPwd = "s3cret";
        const Fetched fetched = fetch(settings, patience);
        EXPECT_EQ(fetched.status, 407) << url;
        EXPECT_TRUE(fetched.credentialsRefused) << url;
        EXPECT_EQ(countOf(proxy, "Proxy-Authorization"), 1) << url;
    }
}

TEST_F(FetchedThroughProxy, TellsProxyAndServerWhoAsks) {
    ScriptedServer proxy([](const std::string& request) {
        if (request.find("Proxy-Authorization: Basic") == std::string::npos)
            return intake::proxyChallenge({intake::BASIC});
        if (request.find("\nAuthorization: Basic") == std::string::npos)
            return intake::challenge({intake::BASIC});
        return reply("200 OK", "[1]");
    });
    Settings settings = through(proxy.address(), "http://data.example/");
    settings.proxyUser = settings.userName = "ada";
    settings.useAuth = true;
    EXPECT_EQ(fetch(settings, patience).body, "[1]");
    EXPECT_EQ(proxy.requests().size(), 3U);
}

TEST_F(FetchedThroughProxy, IsNotWhenTheProxyOpensNoTunnel) {
    ScriptedServer proxy({reply("403 Forbidden", "no")});
    const FetchFailure failure = failureOf(through(proxy.address(), "https://data.example/"));
    EXPECT_EQ(failure.what(),
              "is not let through by the proxy " + proxy.address() + " (status 403)");
    EXPECT_NE(failure.next.find("data.example:443"), std::string::npos);
}

TEST_F(FetchedThroughProxy, GoesThroughATunnel) {
    const intake::CertificateAuthority authority;
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    ScriptedServer server({reply("200 OK", "[1]")}, intake::overTls(authority.issue()));
    const intake::ForwardProxy proxy;
    const Fetched fetched = fetch(through(proxy.address(), server.url("/")), patience);
    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_TRUE(fetched.certificate);
}

}  // namespace

}  // namespace probe
