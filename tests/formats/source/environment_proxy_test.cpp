#include "formats/source/environment_proxy.h"

#include <gtest/gtest.h>

#include <map>

namespace intake {

namespace {

Environment with(const std::map<std::string, std::string>& variables) {
    return [variables](const char* name) {
        const auto found = variables.find(name);
        return found == variables.end() ? nullptr : found->second.c_str();
    };
}

std::string exceptionsFor(const std::string& host, const std::string& noProxy) {
    return proxyExceptions(host, with({{"no_proxy", noProxy}}));
}

TEST(EnvironmentProxy, IsForNoHostWhereAllAreExcepted) {
    EXPECT_TRUE(exceptsEveryHost(with({{"no_proxy", "*"}})));
    EXPECT_TRUE(exceptsEveryHost(with({{"NO_PROXY", "*"}})));
    EXPECT_FALSE(exceptsEveryHost(with({{"no_proxy", "*.lan"}})));
    EXPECT_FALSE(exceptsEveryHost(with({})));
}

TEST(EnvironmentProxy, IsReadWhereItIsANumericAddressWithoutAScheme) {
    EXPECT_EQ(numericProxy("http://a", with({{"http_proxy", "10.0.0.1:3128"}})),
              "http://10.0.0.1:3128");
    EXPECT_EQ(numericProxy("http://a", with({{"HTTP_PROXY", "[::1]:3128"}})), "http://[::1]:3128");
    EXPECT_EQ(numericProxy("http://a", with({{"http_proxy", "http://10.0.0.1:3128"}})), "");
    EXPECT_EQ(numericProxy("http://a", with({{"http_proxy", "proxy.lan:3128"}})), "");
    EXPECT_EQ(numericProxy("http://a", with({})), "");
}

TEST(EnvironmentProxy, ForHttpsIsThatForHttpWhereThereIsNoOther) {
    const std::map<std::string, std::string> both{{"http_proxy", "10.0.0.1:1"},
                                                  {"https_proxy", "10.0.0.2:2"}};
    EXPECT_EQ(numericProxy("https://a", with(both)), "http://10.0.0.2:2");
    EXPECT_EQ(numericProxy("http://a", with(both)), "http://10.0.0.1:1");
    EXPECT_EQ(numericProxy("https://a", with({{"http_proxy", "10.0.0.1:1"}})), "http://10.0.0.1:1");
}

TEST(EnvironmentProxy, ExceptsHostsAndDomains) {
    EXPECT_EQ(exceptionsFor("a.lan", "b.lan,.example, 10.0.0.1"), "b.lan,.example,10.0.0.1");
    EXPECT_EQ(exceptionsFor("a.lan", ""), "");
    EXPECT_EQ(proxyExceptions("a.lan", with({})), "");
}

TEST(EnvironmentProxy, ExceptsADomainWithAStarToo) {
    EXPECT_EQ(exceptionsFor("a.lan", "*.lan, *.example"), ".lan,.example");
}

TEST(EnvironmentProxy, ExceptsLocalHostsWhichHaveNoDot) {
    EXPECT_EQ(exceptionsFor("media", "b.lan, <local>"), "b.lan,media");
    EXPECT_EQ(exceptionsFor("media", "<local>,b.lan"), "media,b.lan");
    EXPECT_EQ(exceptionsFor("a.lan", "<local>,b.lan"), "b.lan");
    EXPECT_EQ(exceptionsFor("a.lan", "b.lan,<local>"), "b.lan");
}

TEST(SystemProxy, IsWhatIsFoundWithoutExceptions) {
    const auto proxy =
        systemProxy("http://a", with({{"http_proxy", "10.0.0.1:1"}, {"no_proxy", "b"}}),
                    [] { return std::optional<std::string>("http://found:1"); });
    ASSERT_TRUE(proxy);
    EXPECT_EQ(proxy->address, "http://found:1");
    EXPECT_EQ(proxy->exceptions, "");
}

TEST(SystemProxy, IsThatOfTheEnvironmentWhereNoneIsFound) {
    const auto proxy = systemProxy(
        "http://media", with({{"http_proxy", "10.0.0.1:1"}, {"no_proxy", "<local>,*.lan"}}),
        [] { return std::optional<std::string>(""); });
    ASSERT_TRUE(proxy);
    EXPECT_EQ(proxy->address, "http://10.0.0.1:1");
    EXPECT_EQ(proxy->exceptions, "media,.lan");
}

TEST(SystemProxy, IsNotKnownWhereTheSearchFindsNothingOut) {
    EXPECT_FALSE(systemProxy("http://a", with({{"http_proxy", "10.0.0.1:1"}}),
                             [] { return std::optional<std::string>(); }));
}

TEST(SystemProxy, IsNotSearchedForWhereEveryHostIsExcepted) {
    const auto proxy = systemProxy("http://a", with({{"no_proxy", "*"}}), [] {
        ADD_FAILURE();
        return std::optional<std::string>();
    });
    ASSERT_TRUE(proxy);
    EXPECT_EQ(proxy->address, "");
}

}  // namespace

}  // namespace intake
