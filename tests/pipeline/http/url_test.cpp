#include "pipeline/url.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace intake {
namespace {

/// Where a URL leads, as one text; for a port that is none, the reason.
std::string split(const std::string& url) {
    try {
        const HttpAddress address = splitUrl(url);
        return (address.secure ? "secure " : "plain ") + address.host + " " +
               std::to_string(address.port) + " " + address.path;
    } catch (const std::invalid_argument& error) {
        return std::string("invalid_argument: ") + error.what();
    } catch (const std::out_of_range& error) {
        return std::string("out_of_range: ") + error.what();
    }
}

const std::string NO_NUMBER = "invalid_argument: invalid stoi argument";
const std::string OUT_OF_RANGE = "out_of_range: stoi argument out of range";

TEST(Url, IsSplitAtTheFirstSlashBehindTheHost) {
    EXPECT_EQ(split("http://www.example.com/a/b.json"), "plain www.example.com 80 /a/b.json");
}

TEST(Url, KeepsTheQueryInThePath) {
    EXPECT_EQ(split("http://h/a?b=c&d=/e//f"), "plain h 80 /a?b=c&d=/e//f");
}

TEST(Url, TakesTheHostBehindTheFirstDoubleSlash) {
    EXPECT_EQ(split("http://h//double//slashes"), "plain h 80 //double//slashes");
}

TEST(Url, MayComeWithTextBeforeTheScheme) {
    EXPECT_EQ(split("  http://h/a"), "plain h 80 /a");
}

TEST(Url, WithoutAPathAsksForTheRoot) {
    EXPECT_EQ(split("http://h"), "plain h 80 /");
    EXPECT_EQ(split("http://h:81"), "plain h 81 /");
}

TEST(Url, WithoutAPathMayHaveAQuery) {
    EXPECT_EQ(split("http://h?a=b"), "plain h 80 /?a=b");
    EXPECT_EQ(split("http://h:81?a=b/c"), "plain h 81 /?a=b/c");
}

TEST(Url, OfHttpsIsSecureAndHasPort443) {
    EXPECT_EQ(split("https://h/a"), "secure h 443 /a");
}

TEST(Url, OfHttpsTakesItsOwnPortAndStaysSecure) {
    EXPECT_EQ(split("https://h:8443/a"), "secure h 8443 /a");
}

TEST(Url, WhoseHostCarries8080HasPort8080) {
    EXPECT_EQ(split("http://h:8080/a"), "plain h 8080 /a");
}

TEST(Url, MayNameAnyPortUpToTheLast) {
    EXPECT_EQ(split("http://h:0/"), "plain h 0 /");
    EXPECT_EQ(split("http://h:1/"), "plain h 1 /");
    EXPECT_EQ(split("http://h:65535/"), "plain h 65535 /");
}

TEST(Url, AColonInThePathIsNoPort) {
    EXPECT_EQ(split("http://h/a:b"), "plain h 80 /a:b");
    EXPECT_EQ(split("http://h?a:b"), "plain h 80 /?a:b");
}

TEST(Url, APortThatIsNoNumberFailsWithInvalidStoiArgument) {
    EXPECT_EQ(split("http://h:http/"), NO_NUMBER);
    EXPECT_EQ(split("http://h:x80/"), NO_NUMBER);
    EXPECT_EQ(split("http://user:password@h/"), NO_NUMBER);
}

TEST(Url, APortThatIsEmptyFailsWithInvalidStoiArgument) {
    EXPECT_EQ(split("http://h:/a"), NO_NUMBER);
    EXPECT_EQ(split("http://h:"), NO_NUMBER);
    EXPECT_EQ(split("http://h: /a"), NO_NUMBER);
}

TEST(Url, APortOfSignsAloneFailsWithInvalidStoiArgument) {
    EXPECT_EQ(split("http://h:+/"), NO_NUMBER);
    EXPECT_EQ(split("http://h:-/"), NO_NUMBER);
    EXPECT_EQ(split("http://h:+-5/"), NO_NUMBER);
    EXPECT_EQ(split("http://h:++5/"), NO_NUMBER);
    EXPECT_EQ(split("http://h:+ 5/"), NO_NUMBER);
}

TEST(Url, APortTooLargeForAnyNumberFailsWithStoiArgumentOutOfRange) {
    EXPECT_EQ(split("http://h:2147483648/"), OUT_OF_RANGE);
    EXPECT_EQ(split("http://h:99999999999999999999/"), OUT_OF_RANGE);
    EXPECT_EQ(split("http://h:-99999999999999999999/"), OUT_OF_RANGE);
}

TEST(Url, ANumberThatIsNoPortFailsWithStoiArgumentOutOfRange) {
    EXPECT_EQ(split("http://h:65536/"), OUT_OF_RANGE);
    EXPECT_EQ(split("http://h:-1/"), OUT_OF_RANGE);
}

TEST(Url, APortEndsWhereItsDigitsEnd) {
    EXPECT_EQ(split("http://h:8080abc/"), "plain h 8080 /");
    EXPECT_EQ(split("http://h:80.5/"), "plain h 80 /");
    EXPECT_EQ(split("http://h:0x50/"), "plain h 0 /");
    EXPECT_EQ(split("http://h:80:90/"), "plain h 80 /");
}

TEST(Url, APortMayBeginWithBlanksASignAndZeros) {
    EXPECT_EQ(split("http://h: \t8080/"), "plain h 8080 /");
    EXPECT_EQ(split("http://h:+8080/"), "plain h 8080 /");
    EXPECT_EQ(split("http://h:0008080/"), "plain h 8080 /");
}

TEST(Url, TheColonsOfAnIpv6HostInBracketsAreNoPort) {
    EXPECT_EQ(split("http://[::1]/a"), "plain [::1] 80 /a");
    EXPECT_EQ(split("https://[fe80::1]"), "secure [fe80::1] 443 /");
}

TEST(Url, AnIpv6HostInBracketsMayBeFollowedByAPort) {
    EXPECT_EQ(split("http://[::1]:8080/a"), "plain [::1] 8080 /a");
    EXPECT_EQ(split("http://[::1]:x/a"), NO_NUMBER);
    EXPECT_EQ(split("http://[::1]:/a"), NO_NUMBER);
}

TEST(Url, AnIpv6HostWithoutBracketsIsCutAtItsFirstColon) {
    EXPECT_EQ(split("http://fe80:1:2/a"), "plain fe80 1 /a");
}

TEST(Url, WithoutAHostHasAnEmptyOne) {
    EXPECT_EQ(split("http:///a"), "plain  80 /a");
}

TEST(Url, AnotherUrlWithinTheQueryDoesNotMakeItSecure) {
    const HttpAddress address = splitUrl("http://relay.example/get?from=https://feeds.example/");
    EXPECT_FALSE(address.secure);
    EXPECT_EQ(address.host, "relay.example");
    EXPECT_EQ(address.port, 80);
    EXPECT_EQ(address.path, "/get?from=https://feeds.example/");
}

}  // namespace
}  // namespace intake
