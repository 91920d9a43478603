// What `explain` says of XML from servers that speak HTTP.

#include "tests/http/support/challenges.h"
#include "tests/http/support/loopback.h"
#include "tests/workbench/cli/linux/NetworkTest.h"

using intake::reply;
using intake::Reply;
using intake::ScriptedServer;

namespace {

/// Answers an XML query of a server.
class ExplainedXmlUrl : public ExplainedUrl {
protected:
    void expectOfXml(const Reply& answer, const std::string& text) const {
        expectOf(answer, {"queryMode=XML", "xpath=/l/c", "key=@id"}, text);
    }
};

}  // namespace

TEST_F(ExplainedXmlUrl, ThatLoadsHasATickAtEachStage) {
    expectOfXml(reply("200 OK", "<l><c id='1'/><c id='2'/></l>", "Content-Type: text/xml\r\n"),
                R"(
http://SERVER/clubs: 2 records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✓ fetched   200, text/xml, 29 bytes, # ms
  ✓ format    XML
  ✓ selection /l/c: 2 nodes
  ✓ key       @id
  ✓ rows      all 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedXmlUrl, AServerErrorIsTold) {
    expectOfXml(reply("500 Internal Server Error", "<html><title>Oops</title>", isHtml), R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   500, text/html, 25 bytes, # ms
              The server answers with status 500, and with what is an HTML page titled "Oops". The fault is the server's.
              Try again later, or ask whoever runs the server.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedXmlUrl, AnAddressThatIsNotThereIsTold) {
    expectOfXml(reply("404 Not Found", "<html><title>Not found</title>", isHtml), R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   404, text/html, 30 bytes, # ms
              The server answers with status 404, and with what is an HTML page titled "Not found".
              Set "File Name" (filename) to an address that the server has.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedXmlUrl, ALoginThatIsAskedForIsTold) {
    expectOfXml(intake::challenge({intake::BASIC}, "<l/>"), R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   401, 4 bytes, # ms
              The server answers with status 401, and with what is XML. It asks for a login, and none is sent.
              Set "Use Authentication" (useAuth), "User Name" (userName) and "Password" (password).
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedXmlUrl, ALoginPageIsTold) {
    expectOfXml(reply("200 OK", signIn, isHtml), R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✓ fetched   200, text/html, 50 bytes, # ms
  ✗ format    an HTML page titled "Sign in"
              The query type is XML, and the source is an HTML page titled "Sign in".
              Look at the address in a browser: a server sends a page when a login has expired, or when the address is another one.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedXmlUrl, JsonIsTold) {
    expectOfXml(reply("200 OK", clubs, isJson), R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✓ fetched   200, application/json, 54 bytes, # ms
  ✗ format    JSON
              The query type is XML, and the source is JSON.
              Set "Query type: " (queryMode) to what the source is.
  – selection, key, rows, script, store: not reached
  Try: --set queryMode=JSON --set 'xpath=*' --set key=id   (2 records, checked)
)");
}

TEST_F(ExplainedXmlUrl, ThatIsCutIsTold) {
    expectOfXml(reply("200 OK", "<l><c id='1'/><c id="), R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✓ fetched   200, 20 bytes, # ms
  ✗ format    XML that is not whole or not right
              AttValue: " or ' expected (line 1, column 21). The text ends there: it is cut off. Over the network the plugin says nothing of this; it loads no records.
              Fetch it again, or ask whoever writes it.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedXmlUrl, AHeaderOfTwoCharactersIsHiddenInTheRequest) {
    ScriptedServer server(always(reply("200 OK", "<r><i/></r>")));
    const ChildResult result = explain(
        {"queryMode=XML", "filename=" + server.url("/"), "table=T", "xpath=/r/i", "mode=DataArray",
         "useCustomHeaders=1", "customHeaders=X-Pin: 42\nAuthorization: 7\nCookie: 8"},
        {"--out", "json"});
    for (const char* const line : {"X-Pin: ••••", "Authorization: ••••", "Cookie: ••••"})
        EXPECT_NE(result.out.find(line), std::string::npos) << result.out;
}

TEST_F(ExplainedXmlUrl, AHeaderThatIsCutAtAColonIsHiddenInTheRequest) {
    ScriptedServer server(always(reply("200 OK", "<r><i/></r>")));
    const ChildResult result = explain(
        {"queryMode=XML", "filename=" + server.url("/"), "table=T", "xpath=/r/i", "mode=DataArray",
         "useCustomHeaders=1", "customHeaders=X-Key: topsecretA:topsecretB\nX-Two: first\\secret"},
        {"--out", "json"});
    EXPECT_NE(result.out.find("X-Key: ••••"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("X-Two: ••••"), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("secret"), std::string::npos) << result.out;
}
