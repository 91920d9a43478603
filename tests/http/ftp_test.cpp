// XML documents from a real FTP server.

#include "platform/linux/curl/CurlConnections.h"
#include "tests/http/support/FtpDaemon.h"
#include "tests/platform/xml/XmlRequestTest.h"

namespace intake {

namespace {

constexpr uint32_t OBJECT_NOT_FOUND = 0x800C0006;
constexpr uint32_t LOGIN_REQUIRED = 0x800C0009;

class XmlFromFtpDaemon : public XmlRequestTest {
protected:
    void fetchAs(const std::string& user, const std::string& password, const std::string& url) {
        user_ = &user;
        password_ = &password;
        fetch(url);
    }
};

TEST_F(XmlFromFtpDaemon, AFileIsLoadedByAnybodyWhereAnybodyMay) {
    const FtpDaemon server;
    server.write("data.xml", "<a> 1 </a>");
    fetch(server.url("/data.xml"));
    EXPECT_EQ(texts("/a"), "1|");
}

TEST_F(XmlFromFtpDaemon, AFileInAFolderIsLoaded) {
    const FtpDaemon server;
    server.write("league/day 28/data.xml", "<a>\xC3\xA4</a>");
    fetch(server.url("/league/day 28/data.xml"));
    EXPECT_EQ(texts("/a"), "\xC3\xA4|");
}

TEST_F(XmlFromFtpDaemon, AFileIsLoadedWithUserNameAndPassword) {
    const FtpDaemon server("s3cret");
    server.write("data.xml", "<a>1</a>");
    fetchAs(FtpDaemon::USER, "s3cret", server.url("/data.xml"));
    EXPECT_EQ(texts("/a"), "1|");
}

TEST_F(XmlFromFtpDaemon, ItsSessionEndsWithTheLoad) {
    const FtpDaemon server;
    server.write("data.xml", "<a>1</a>");
    fetch(server.url("/data.xml"));
    EXPECT_EQ(texts("/a"), "1|");
    request_.reset();
    EXPECT_TRUE(static_cast<CurlConnections&>(*connections_).sockets().areNone());
}

TEST_F(XmlFromFtpDaemon, AWrongPasswordIsRefused) {
    const FtpDaemon server("s3cret");
    server.write("data.xml", "<a>1</a>");
    const PlatformError error =
        errorOf([&] { fetchAs(FtpDaemon::USER, "guess", server.url("/data.xml")); });
    EXPECT_EQ(error.code(), LOGIN_REQUIRED);
    EXPECT_EQ(error.description().find("guess"), std::string::npos) << error.description();
}

TEST_F(XmlFromFtpDaemon, NobodyIsLetInWithoutThePassword) {
    const FtpDaemon server("s3cret");
    server.write("data.xml", "<a>1</a>");
    EXPECT_EQ(errorOf([&] { fetch(server.url("/data.xml")); }).code(), LOGIN_REQUIRED);
}

TEST_F(XmlFromFtpDaemon, AFileOrFolderThatIsNotThereIsNotFound) {
    const FtpDaemon server;
    EXPECT_EQ(errorOf([&] { fetch(server.url("/data.xml")); }).code(), OBJECT_NOT_FOUND);
    EXPECT_EQ(errorOf([&] { fetch(server.url("/none/data.xml")); }).code(), OBJECT_NOT_FOUND);
}

TEST_F(XmlFromFtpDaemon, ALargeFileArrivesWhole) {
    const FtpDaemon server;
    constexpr int ROWS = 200'000;
    std::string text = "<a>";
    for (int row = 0; row < ROWS; ++row) {
        text += "<b>" + std::to_string(row) + "</b>\n";
    }
    server.write("data.xml", text + "</a>");
    fetch(server.url("/data.xml"));
    EXPECT_EQ(count("/a/b"), static_cast<size_t>(ROWS));
    EXPECT_EQ(texts("/a/b[last()]"), "199999|");
}

TEST_F(XmlFromFtpDaemon, ABodyThatIsNoXmlEmptiesTheDocument) {
    load("<before/>");
    const FtpDaemon server;
    server.write("data.xml", "not XML");
    fetch(server.url("/data.xml"));
    EXPECT_EQ(document_->rootElement(), nullptr);
}

}  // namespace

}  // namespace intake
