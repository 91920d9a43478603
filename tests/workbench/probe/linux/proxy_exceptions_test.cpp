// Which hosts a list of exceptions, as in the variable no_proxy, leaves out of a proxy.

#include "workbench/probe/fetch/linux/proxy_exceptions.h"

#include <gtest/gtest.h>

using probe::isExcepted;

TEST(ProxyExceptions, AreOfADomainAndAllBelowIt) {
    EXPECT_TRUE(isExcepted("example.org", "example.org"));
    EXPECT_TRUE(isExcepted("example.org", ".example.org"));
    EXPECT_TRUE(isExcepted("data.example.org", "example.org"));
    EXPECT_TRUE(isExcepted("data.example.org", "EXAMPLE.org"));
}

TEST(ProxyExceptions, AreNotOfADomainThatOnlyEndsTheSame) {
    EXPECT_FALSE(isExcepted("anexample.org", "example.org"));
    EXPECT_FALSE(isExcepted("example.org", "data.example.org"));
    EXPECT_FALSE(isExcepted("example.org", ""));
    EXPECT_FALSE(isExcepted("example.org", "."));
}

TEST(ProxyExceptions, MayStandAnywhereInTheList) {
    EXPECT_TRUE(isExcepted("example.org", "localhost,example.org,10.0.0.0/8"));
    EXPECT_FALSE(isExcepted("example.com", "localhost,example.org,10.0.0.0/8"));
}

TEST(ProxyExceptions, AreOfAnAddress) {
    EXPECT_TRUE(isExcepted("192.0.2.7", "192.0.2.7"));
    EXPECT_FALSE(isExcepted("192.0.2.7", "192.0.2.70"));
    EXPECT_TRUE(isExcepted("[2001:db8::1]", "2001:db8::1"));
    EXPECT_TRUE(isExcepted("[2001:db8::1]", "2001:DB8:0::1"));
}

TEST(ProxyExceptions, AreOfANetwork) {
    EXPECT_TRUE(isExcepted("192.0.2.7", "192.0.2.0/24"));
    EXPECT_FALSE(isExcepted("192.0.3.7", "192.0.2.0/24"));
    EXPECT_TRUE(isExcepted("[2001:db8::1]", "2001:db8::/32"));
    EXPECT_FALSE(isExcepted("[2001:db9::1]", "2001:db8::/32"));
}

TEST(ProxyExceptions, AreNotOfANetworkLongerThanAnAddress) {
    EXPECT_TRUE(isExcepted("192.0.2.7", "192.0.2.7/32"));
    EXPECT_FALSE(isExcepted("192.0.2.7", "192.0.2.7/33"));
}
