// XML over FTP from end to end: the workbench, the plugin and a server.

#include "tests/http/support/FtpDaemon.h"
#include "tests/workbench/cli/Workbench.h"

namespace intake {

namespace {

constexpr const char* PAYLOAD =
    "<payload><field name='stock'><field name='symbol'><value>KLDBY</value></field>"
    "<field name='price'><value>310.25</value></field></field></payload>";

class FtpPluginTest : public Workbench {
protected:
    ChildResult loadUrl(const std::string& url, std::vector<std::string> settings) const {
        settings.insert(settings.begin(), {"queryMode=XML", "filename=" + url, "table=T"});
        return load(settings, {"--out", "script"});
    }
};

TEST_F(FtpPluginTest, ADocumentIsLoaded) {
    const FtpDaemon server;
    server.write("clubs.xml", "<clubs><name>Rovers</name><name>City</name></clubs>");

    const ChildResult result =
        loadUrl(server.url("/clubs.xml"), {"xpath=/clubs/name", "mode=Data Field Array"});

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, R"(T[0-1]=""Rovers"",""City""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(result.err, "");
}

TEST_F(FtpPluginTest, APayloadIsConverted) {
    const FtpDaemon server("s3cret");
    server.write("stocks.xml", PAYLOAD);

    const ChildResult result =
        loadUrl(server.url("/stocks.xml"),
                {"xpath=/payload/stock", "mode=DataTable", "key=symbol", "inputFormat=Payload",
                 "useAuth=1", std::string("userName=") + FtpDaemon::USER, "password=s3cret"});

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "T[KLDBY]={{symbol=KLDBY;price=310.25;};};");
    EXPECT_EQ(result.err, "");
}

TEST_F(FtpPluginTest, AMissingFileFails) {
    const FtpDaemon server;

    const ChildResult result = loadUrl(server.url("/clubs.xml"), {"xpath=/clubs/name"});

    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "READER_NUM_RECORDS=0;");
    EXPECT_TRUE(result.err.starts_with("Error\n\tCode = 0x800c0006\n")) << result.err;
}

}  // namespace

}  // namespace intake
