#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

const std::string FETCH = "send\nstatus\navailable\nclose\n";

const std::string LATE =
    "5/3 9:7 WARNING: \t\t\tHTTP: No proxy is used. the client's error 12002.\n";

/// Proxy mode 0.
class DetectedProxy : public FetchTest {
protected:
    DetectedProxy() {
        client_.respond({});
        client_.setProxyForUrl("found:3128", "*.lan");
        request_.enableProxy = true;
        request_.proxyMode = 0;
        request_.proxyUrl = "manual:1";
        request_.proxyUser = "pat";
        request_.proxyPwd = "hidden";
    }

    /// Expects one proxy look-up, whose proxy is then set.
    void expectLookup(const std::string& arguments) {
        EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
        EXPECT_EQ(client_.calls(), OPEN + "proxyDetection\nproxyForUrl 'http://www.example.com'" +
                                       arguments + "\nsetProxy 'found:3128' bypass '*.lan'\n" +
                                       FETCH);
        EXPECT_EQ(diagnostics_.debugText(), "");
    }
};

TEST_F(DetectedProxy, IsAskedOfTheNetworkWhenTheConfigurationSaysSo) {
    client_.setDetection(true, "");
    expectLookup(" detect script ''");
}

TEST_F(DetectedProxy, IsAskedOfTheNetworkWhenTheConfigurationCannotBeRead) {
    client_.fail("proxyDetection", HTTP_ERROR_INTERNAL);
    expectLookup(" detect script ''");
}

TEST_F(DetectedProxy, IsAskedOfAScriptThatTheConfigurationNames) {
    client_.setDetection(false, "http://conf/proxy.pac");
    expectLookup(" script 'http://conf/proxy.pac'");
}

TEST_F(DetectedProxy, IsAskedOfTheScriptAloneWhenTheConfigurationNamesBoth) {
    client_.setDetection(true, "http://conf/proxy.pac");
    expectLookup(" script 'http://conf/proxy.pac'");
}

TEST_F(DetectedProxy, IsAskedOfNothingWhenTheConfigurationNamesNeither) {
    client_.setDetection(false, "");
    expectLookup(" script ''");
}

TEST_F(DetectedProxy, ThatIsADirectConnectionIsSetAsSuch) {
    client_.setProxyForUrl("", "");

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(),
              OPEN + "proxyDetection\nproxyForUrl 'http://www.example.com' script ''\nsetDirect\n" +
                  FETCH);
    EXPECT_EQ(diagnostics_.debugText(), "");
}

TEST_F(DetectedProxy, ThatCannotBeFoundIsDoneWithoutAndTheDebuggerSeesWhy) {
    client_.fail("proxyForUrl", HTTP_ERROR_PROXY_NOT_FOUND);

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(),
              OPEN + "proxyDetection\nproxyForUrl 'http://www.example.com' script ''\n" + FETCH);
    EXPECT_EQ(diagnostics_.debugText(), "ERROR: RDR_HTTP: the client's error 12180\n");
    EXPECT_EQ(log(), "");
}

TEST_F(DetectedProxy, ThatIsNotKnownInTimeIsDoneWithoutAndTheLogSaysSo) {
    client_.fail("proxyForUrl", HTTP_ERROR_TIMEOUT);

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(diagnostics_.debugText(), "ERROR: RDR_HTTP: the client's error 12002\n");
    EXPECT_EQ(log(), LATE);
}

TEST_F(DetectedProxy, ThatCannotBeSetIsDoneWithout) {
    client_.fail("setProxy", HTTP_ERROR_INVALID_PARAMETER);

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(),
              OPEN +
                  "proxyDetection\nproxyForUrl 'http://www.example.com' script ''\n"
                  "setProxy 'found:3128' bypass '*.lan'\n" +
                  FETCH);
}

TEST_F(DetectedProxy, IsLookedUpForTheHostAlone) {
    EXPECT_EQ(fetch("https://www.example.com:8443/a/b?c"), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(),
              "open 'www.example.com' port 8443 secure path '/a/b?c' agent 'NXR/1.0'\n"
              "proxyDetection\nproxyForUrl 'http://www.example.com' script ''\n"
              "setProxy 'found:3128' bypass '*.lan'\n" +
                  FETCH);
}

/// Proxy mode 1.
class SystemProxy : public FetchTest {
protected:
    SystemProxy() {
        client_.respond({});
        client_.setSystemProxy("system:3128", "localhost;*.lan");
        request_.enableProxy = true;
        request_.proxyMode = 1;
        request_.proxyUrl = "manual:1";
        request_.proxyUser = "pat";
        request_.proxyPwd = "hidden";
    }
};

TEST_F(SystemProxy, IsSetWithItsBypassListAndNothingElse) {
    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "systemProxy 'http://www.example.com'\n"
                                   "setProxy 'system:3128' bypass 'localhost;*.lan'\n" +
                                   FETCH);
}

TEST_F(SystemProxy, ThatIsNotConfiguredIsDoneWithoutInSilence) {
    client_.fail("systemProxy", HTTP_ERROR_PROXY_NOT_FOUND);

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + "systemProxy 'http://www.example.com'\n" + FETCH);
    EXPECT_EQ(diagnostics_.debugText(), "");
    EXPECT_EQ(log(), "");
}

TEST_F(SystemProxy, ThatIsNotKnownInTimeIsDoneWithoutAndTheLogSaysSo) {
    client_.fail("systemProxy", HTTP_ERROR_TIMEOUT);

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN + "systemProxy 'http://www.example.com'\n" + FETCH);
    EXPECT_EQ(diagnostics_.debugText(), "");
    EXPECT_EQ(log(), LATE);
}

TEST_F(SystemProxy, ThatCannotBeSetIsDoneWithout) {
    client_.fail("setProxy", HTTP_ERROR_INVALID_PARAMETER);

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "systemProxy 'http://www.example.com'\n"
                                   "setProxy 'system:3128' bypass 'localhost;*.lan'\n" +
                                   FETCH);
}

}  // namespace
}  // namespace intake
