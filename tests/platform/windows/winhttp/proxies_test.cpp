#include "tests/platform/windows/winhttp/WinHttpTest.h"

namespace intake {
namespace {

const std::string BROWSER = "WinHttpGetIEProxyConfigForCurrentUser()\n";
TEST_F(WinHttpTest, AManualProxyIsSetWithItsUserAndPassword) {
    useProxy(2);

    expectSetUp(MANUAL_PROXY);
}

TEST_F(WinHttpTest, AnEmptyProxyUserIsSetAsAnEmptyText) {
    useProxy(2);
    request_.proxyUser = "";

    expectSetUp(
        "WinHttpSetOption(request, 0x26, 0x3 \"proxy:3128\" \"<local>\")\n"
        "WinHttpSetOption(request, 0x1002, \"\", 0x1)\n"
        "WinHttpSetOption(request, 0x1003, \"hidden\", 0x7)\n");
}

TEST_F(WinHttpTest, AnEmptyManualProxyIsLeftToTheSystemToRefuse) {
    useProxy(2);
    request_.proxyUrl = "";
    system_.fail("WinHttpSetOption", 2);

    EXPECT_FALSE(fetch());
    EXPECT_EQ(output_, "Error 1450 has occurred.\n");
    EXPECT_EQ(system_.calls(),
              OPEN + "WinHttpSetOption(request, 0x26, 0x3 null \"<local>\")\n" + CLOSE);
}

TEST_F(WinHttpTest, TheBrowsersProxyIsSetWithItsBypassList) {
    system_.browserScript = L"http://conf/proxy.pac";
    system_.browserProxy = L"desk:3128";
    system_.browserBypass = L"*.lan;<local>";
    useProxy(1);

    expectSetUp(BROWSER + "WinHttpSetOption(request, 0x26, 0x3 \"desk:3128\" \"*.lan;<local>\")\n");
}

TEST_F(WinHttpTest, TheBrowsersProxyMayHaveNoBypassList) {
    system_.browserProxy = L"desk:3128";
    useProxy(1);

    expectSetUp(BROWSER + "WinHttpSetOption(request, 0x26, 0x3 \"desk:3128\" null)\n");
}

TEST_F(WinHttpTest, WithoutAProxyOfTheBrowserNoneIsSet) {
    system_.browserDetects = 1;
    system_.browserScript = L"http://conf/proxy.pac";
    useProxy(1);

    expectSetUp(BROWSER);
}

TEST_F(WinHttpTest, WhereTheBrowsersProxyCannotBeReadNoneIsSet) {
    system_.fail("WinHttpGetIEProxyConfigForCurrentUser");
    useProxy(1);

    expectSetUp(BROWSER);
    EXPECT_EQ(diagnostics_.debugText(), "");
}

class WinHttpDetectionTest : public WinHttpTest {
protected:
    WinHttpDetectionTest() {
        system_.foundProxy = L"found:3128";
        system_.foundBypass = L"*.lan";
        useProxy(0);
    }

    const std::string BY_NETWORK =
        "WinHttpGetProxyForUrl(session, \"http://www.example.com\", 0x1, 0x3, null, 0x0)\n";
    const std::string SET = "WinHttpSetOption(request, 0x26, 0x3 \"found:3128\" \"*.lan\")\n";
};

TEST_F(WinHttpDetectionTest, AsksDhcpAndDnsWhereTheBrowserDoes) {
    system_.browserDetects = 1;
    system_.browserProxy = L"desk:3128";
    system_.browserBypass = L"*.desk";

    expectSetUp(BROWSER + BY_NETWORK + SET);
}

TEST_F(WinHttpDetectionTest, AsksDhcpAndDnsWhereTheBrowsersConfigurationCannotBeRead) {
    system_.fail("WinHttpGetIEProxyConfigForCurrentUser");

    expectSetUp(BROWSER + BY_NETWORK + SET);
}

TEST_F(WinHttpDetectionTest, AsksTheBrowsersScript) {
    system_.browserDetects = 1;
    system_.browserScript = L"http://conf/proxy.pac";

    expectSetUp(BROWSER +
                "WinHttpGetProxyForUrl(session, \"http://www.example.com\", 0x2, 0x0, "
                "\"http://conf/proxy.pac\", 0x0)\n" +
                SET);
}

TEST_F(WinHttpDetectionTest, SetsADirectConnectionWhereOneIsFound) {
    system_.browserDetects = 1;
    system_.foundAccess = 1;
    system_.foundProxy = nullptr;
    system_.foundBypass = nullptr;

    expectSetUp(BROWSER + BY_NETWORK + "WinHttpSetOption(request, 0x26, 0x1 null null)\n");
}

TEST_F(WinHttpDetectionTest, ThatFindsNoneGoesOnAndTheDebuggerSeesTheSystemsReason) {
    system_.browserDetects = 1;
    system_.fail("WinHttpGetProxyForUrl");

    expectSetUp(BROWSER + BY_NETWORK);
    EXPECT_EQ(diagnostics_.debugText().find("ERROR: RDR_HTTP: "), 0U);
    EXPECT_GT(diagnostics_.debugText().size(), std::string("ERROR: RDR_HTTP: \n").size());
}

}  // namespace
}  // namespace intake
