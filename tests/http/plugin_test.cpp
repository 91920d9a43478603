// URLs from end to end: the workbench, the plugin and a server.

#include <algorithm>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/http/support/ForwardProxy.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/WebServer.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/linux/tls.h"
#include "tests/http/support/messages.h"
#include "tests/workbench/cli/Workbench.h"

namespace intake {

namespace {

constexpr const char* CLUBS = R"({"clubs": [{"name": "Rovers"}, {"name": "City"}]})";
constexpr const char* SCRIPT = "T[0-1]=\"\"Rovers\"\",\"\"City\"\"; READER_NUM_RECORDS=2;";

class HttpPluginTest : public Workbench {
protected:
    ChildResult loadUrl(const std::string& url, std::vector<std::string> settings = {},
                        const std::vector<std::string>& more = {"--out", "script"}) const {
        settings.insert(settings.begin(), {"queryMode=JSON", "filename=" + url, "xpath=clubs/name",
                                           "mode=Data Field Array", "table=T"});
        return load(settings, more);
    }
};

/// The path of a request, with its query.
std::string pathOf(const std::string& request) {
    return request.substr(4, request.find(" HTTP/1.1") - 4);
}

std::vector<std::string> paths(ScriptedServer& server) {
    std::vector<std::string> paths;
    for (const std::string& request : server.requests()) {
        paths.push_back(pathOf(request));
    }
    return paths;
}

TEST_F(HttpPluginTest, AUrlIsLoaded) {
    WebServer server("");
    server.write("clubs.json", CLUBS);

    const ChildResult result = loadUrl(server.url("/clubs.json"));

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, SCRIPT);
    EXPECT_EQ(result.err, RETRIEVED);
}

TEST_F(HttpPluginTest, AnHttpsUrlIsLoadedFromAServerThatTheSystemTrusts) {
    const CertificateAuthority authority;
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    const TlsFiles tls = authority.issue();
    WebServer server("", &tls);
    server.write("clubs.json", CLUBS);

    EXPECT_EQ(loadUrl(server.secureUrl("/clubs.json")).out, SCRIPT);
}

TEST_F(HttpPluginTest, NoVersionOfTlsBefore12IsUsedWhateverTheSystemAllows) {
    const CertificateAuthority authority;
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    write("openssl.cnf",
          "openssl_conf = all\n[all]\nssl_conf = tls\n[tls]\nsystem_default = any\n"
          "[any]\nMinProtocol = TLSv1\nCipherString = DEFAULT@SECLEVEL=0\n");
    const EnvironmentVariable settings("OPENSSL_CONF", (folder / "openssl.cnf").string());
    ScriptedServer server({reply("200 OK", CLUBS)}, overOldTls(authority.issue()));

    const ChildResult result = loadUrl(server.url("/clubs.json?"));

    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.err.starts_with("Error 12175 has occurred.\n")) << result.err;
    for (const char* type : {"XML", "4"}) {  // 4 is HTML
        const size_t connections = server.connections();
        EXPECT_EQ(loadUrl(server.url("/clubs"), {std::string("queryMode=") + type}).status, 1);
        EXPECT_GT(server.connections(), connections) << type;
    }
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(HttpPluginTest, AnHttpsUrlOfAServerThatNobodyVouchesForFails) {
    const CertificateAuthority authority;
    const TlsFiles tls = authority.issue();
    ScriptedServer server(std::vector<Reply>{}, overTls(tls));
    const std::string url = server.url("/clubs.json");

    const ChildResult result = loadUrl(url);

    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              error(12175) +
                  "ERROR: RDR_HTTP: SSL certificate problem: unable to get local issuer "
                  "certificate\n"
                  "Failed to load JSON file from " +
                  url + ".\n");
}

TEST_F(HttpPluginTest, TheFirstUrlOfAProcessGetsTheNumber34464) {
    ScriptedServer server({reply("200 OK", CLUBS)});

    loadUrl(server.url("/clubs.json"));

    EXPECT_EQ(paths(server), std::vector<std::string>{"/clubs.json?q=34464"});
}

TEST_F(HttpPluginTest, AUrlWithAQuestionMarkIsFetchedUnchanged) {
    ScriptedServer server({reply("200 OK", CLUBS)});

    loadUrl(server.url("/clubs.json?day=1"));

    EXPECT_EQ(paths(server), std::vector<std::string>{"/clubs.json?day=1"});
}

TEST_F(HttpPluginTest, AllInstancesCountTheirUrlsTogether) {
    ScriptedServer server([](const std::string&) { return reply("200 OK", CLUBS); });
    std::string instances;
    for (int i = 0; i < 8; ++i) {
        instances += std::string(i == 0 ? "" : ",") + R"({"name": "i)" + std::to_string(i) +
                     R"(", "parameters": {"queryMode": "JSON", "xpath": "clubs", "table": "T",
                         "autoLoad": true, "autoLoadInterval": 0.1, "filename": ")" +
                     server.url("/clubs.json") + "\"}}";
    }
    write("scene.json", "{\"instances\": [" + instances + "]}");

    EXPECT_EQ(run({"run", "scene.json", "--seconds", "2"}).status, 0);

    std::vector<std::string> requested = paths(server);
    std::sort(requested.begin(), requested.end());
    ASSERT_GT(requested.size(), 8U);
    for (size_t i = 0; i < requested.size(); ++i) {
        EXPECT_EQ(requested[i], "/clubs.json?q=" + std::to_string(34464 + i));
    }
}

TEST_F(HttpPluginTest, AFailedFetchIsReportedWithItsUrl) {
    ScriptedServer server({{"HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n[1,", Then::CLOSE}});
    const std::string url = server.url("/clubs.json");

    const ChildResult result = loadUrl(url);

    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "READER_NUM_RECORDS=0;");
    EXPECT_TRUE(result.err.starts_with(RETRIEVED + errorWithinBody(12030))) << result.err;
    EXPECT_TRUE(result.err.ends_with("Failed to load JSON file from " + url + ".\n")) << result.err;
}

TEST_F(HttpPluginTest, APageThatSaysNotFoundIsNoJson) {
    WebServer server("");

    const ChildResult result = loadUrl(server.url("/clubs.json"));

    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.err.starts_with(otherStatus(404) + "Error parsing JSON: ")) << result.err;
}

TEST_F(HttpPluginTest, APortThatIsNoNumberFails) {
    const ChildResult result = loadUrl("http://127.0.0.1:data/clubs.json");

    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("invalid stoi argument"), std::string::npos) << result.err;
}

TEST_F(HttpPluginTest, CredentialsHeadersAndProxyComeFromTheParameters) {
    ScriptedServer server({challenge({BASIC}), reply("200 OK", CLUBS)});
    const ForwardProxy proxy("BasicAuth editor word\n");

    const ChildResult result = loadUrl(
        server.url("/clubs.json"),
        {"useAuth=1", "userName=designer", "password=secret", "useCustomHeaders=1",
         "customHeaders=X-Desk: 7\nX-Show: news", "enableProxy=1", "proxyMode=Manual Configuration",
         "proxyUrl=" + proxy.address(), "proxyUser=editor", "proxyPwd=word"});

    EXPECT_EQ(result.out, SCRIPT);
    EXPECT_EQ(result.err, PROXY_ASKS + SERVER_ASKS + RETRIEVED);
    EXPECT_EQ(proofs(server).back(), "Basic ZGVzaWduZXI6c2VjcmV0");
    EXPECT_NE(server.requests().back().find("\r\nX-Desk: 7\r\n"), std::string::npos);
    EXPECT_NE(server.requests().back().find("\r\nX-Show: news\r\n"), std::string::npos);
}

TEST_F(HttpPluginTest, AProcessThatEndsWithinAStalledTransferEndsAtOnce) {
    ScriptedServer server({{"", Then::STALL}});

    const ChildResult result =
        loadUrl(server.url("/clubs.json"), {}, {"--out", "script", "--timeout", "1"});

    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(server.requests().size(), 1U);
}

}  // namespace

}  // namespace intake
