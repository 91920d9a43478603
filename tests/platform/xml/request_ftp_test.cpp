// Documents over FTP.

#include "tests/platform/xml/FtpServer.h"
#include "tests/platform/xml/XmlRequestTest.h"

namespace intake {

namespace {

using XmlFtp = XmlRequestTest;

TEST_F(XmlFtp, AFileIsLoadedWithCredentials) {
    FtpServer server("designer", "secret", "data.xml", "<a> 1 </a>");
    const std::string user = "designer";
    const std::string password = "secret";
    user_ = &user;
    password_ = &password;
    fetch(server.url("/data.xml"));
    EXPECT_EQ(texts("/a"), "1|");
}

TEST_F(XmlFtp, WithoutCredentialsTheUserIsAnonymous) {
    FtpServer server("anonymous", "ftp@example.com", "data.xml", "<a/>");
    fetch(server.url("/data.xml"));
    EXPECT_EQ(names("/*"), "a|");
}

TEST_F(XmlFtp, AMissingFileIsAFailure) {
    FtpServer server("anonymous", "ftp@example.com", "data.xml", "<a/>");
    EXPECT_EQ(errorOf([&] { fetch(server.url("/other.xml")); }).code(), 0x800C0006);
}

TEST_F(XmlFtp, ARefusedLoginIsAFailure) {
    FtpServer server("designer", "secret", "data.xml", "<a/>");
    EXPECT_EQ(errorOf([&] { fetch(server.url("/data.xml")); }).code(), 0x800C0009);
}

}  // namespace

}  // namespace intake
