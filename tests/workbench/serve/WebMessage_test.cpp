#include "workbench/serve/WebMessage.h"

#include <gtest/gtest.h>

using serve::WebRequest;

TEST(WebMessageTest, NamesOfHeadersHaveNoCase) {
    WebRequest request;
    request.headers = {{"content-TYPE", "a"}};
    EXPECT_EQ(request.header("Content-Type"), "a");
    EXPECT_EQ(request.header("Host"), "");
}

TEST(WebMessageTest, ParametersAreDecoded) {
    WebRequest request;
    request.query = "a=1&b+c=d%20e+f&empty&g=%zz%4";
    EXPECT_EQ(request.parameter("a"), "1");
    EXPECT_EQ(request.parameter("b c"), "d e f");
    EXPECT_EQ(request.parameter("empty"), "");
    EXPECT_EQ(request.parameter("g"), "%zz%4");
    EXPECT_EQ(request.parameter("none"), "");
}

TEST(WebMessageTest, ABlankInAPathIsNoPlus) {
    EXPECT_EQ(serve::decoded("a+b%2Fc", false), "a+b/c");
    EXPECT_EQ(serve::decoded("%C3%BC", false), "ü");
}
