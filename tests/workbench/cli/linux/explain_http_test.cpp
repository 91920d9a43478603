// What `explain` says of servers that speak HTTP.

#include "tests/http/support/challenges.h"
#include "tests/http/support/linux/packed.h"
#include "tests/http/support/loopback.h"
#include "tests/workbench/cli/linux/NetworkTest.h"

using intake::reply;
using intake::Reply;
using intake::ScriptedServer;
using intake::Then;

TEST_F(ExplainedUrl, ThatLoadsIsToldWithItsStatusTypeAndSize) {
    expectOf(reply("200 OK", clubs, isJson), {}, R"(
http://SERVER/clubs: 2 records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✓ fetched   200, application/json, 54 bytes, # ms
  ✓ format    JSON
  ✓ selection *: 2 objects
  ✓ key       id
  ✓ rows      all 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedUrl, AServerErrorWithAPageFails) {
    expectOf(reply("500 Internal Server Error", "<html><title>Oops</title>", isHtml), {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   500, text/html, 25 bytes, # ms
              The server answers with status 500, and with what is an HTML page titled "Oops". The fault is the server's.
              Try again later, or ask whoever runs the server.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, AServerErrorWithJsonThatLoadsFailsAllTheSame) {
    expectOf(reply("500 Internal Server Error", clubs, isJson), {}, R"(
http://SERVER/clubs: 2 records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   500, application/json, 54 bytes, # ms
              The server answers with status 500, and with what is JSON. The fault is the server's.
              Try again later, or ask whoever runs the server.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, AnAddressThatIsNotThereWithJsonThatLoadsIsAWarning) {
    expectOf(reply("404 Not Found", clubs, isJson), {}, R"(
http://SERVER/clubs: 2 records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ! fetched   404, application/json, 54 bytes, # ms
              The server answers with status 404, and with what is JSON. The plugin loads it all the same.
  ✓ format    JSON
  ✓ selection *: 2 objects
  ✓ key       id
  ✓ rows      all 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedUrl, WhatIsForbiddenButLoadsIsAWarning) {
    expectOf(reply("403 Forbidden", clubs, isJson), {}, R"(
http://SERVER/clubs: 2 records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ! fetched   403, application/json, 54 bytes, # ms
              The server answers with status 403, and with what is JSON. The plugin loads it all the same.
  ✓ format    JSON
  ✓ selection *: 2 objects
  ✓ key       id
  ✓ rows      all 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedUrl, WhatIsForbiddenWithAPageFails) {
    expectOf(reply("403 Forbidden", "<html><title>No entry</title>", isHtml), {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   403, text/html, 29 bytes, # ms
              The server answers with status 403, and with what is an HTML page titled "No entry".
              Ask whoever runs the server for leave to read it; it may take a login.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, WhatIsForbiddenToTheUserThatIsSentNeedsNoOtherLogin) {
    expectOf(reply("403 Forbidden", "<html><title>No entry</title>", isHtml),
             {"useAuth=1", "userName=designer", "password=s3cret"}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   403, text/html, 29 bytes, # ms
              The server answers with status 403, and with what is an HTML page titled "No entry".
              Ask whoever runs the server to let this user read it.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, AnAddressThatIsNotThereFails) {
    expectOf(reply("404 Not Found", "<html><title>Not found</title>", isHtml), {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   404, text/html, 30 bytes, # ms
              The server answers with status 404, and with what is an HTML page titled "Not found".
              Set "File Name" (filename) to an address that the server has.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, AnAddressThatIsNotThereWithNothingFails) {
    expectOf(reply("404 Not Found", ""), {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   404, 0 bytes, # ms
              The server answers with status 404 and nothing.
              Set "File Name" (filename) to an address that the server has.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, ALoginThatIsAskedForAndNotSentIsTold) {
    expectOf(intake::challenge({intake::BASIC}, R"({"error": "login"})"), {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   401, 18 bytes, # ms
              The server answers with status 401, and with what is JSON. It asks for a login, and none is sent.
              Set "Use Authentication" (useAuth), "User Name" (userName) and "Password" (password).
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, ALoginThatIsRefusedIsTold) {
    expectOf(intake::challenge({intake::BASIC}, R"({"error": "login"})"), login, R"(
http://SERVER/clubs: not loaded, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched   401, 18 bytes, # ms
              The server answers with status 401, and with what is JSON. It refuses the user name or the password. They were not sent again: accounts lock after a few times.
              Set "Use Authentication" (useAuth), "User Name" (userName) and "Password" (password).
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, ALoginThatIsRefusedIsSentOnce) {
    ScriptedServer server(always(intake::challenge({intake::BASIC}, "[]")));
    const Settings settings{"queryMode=JSON", "filename=" + server.url("/"), "table=T", "xpath=*",
                            "key=id"};
    const ChildResult result = explain(joined(settings, login));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(countOf(intake::proofs(server)), 1U);
}

TEST_F(ExplainedUrl, ALoginPageInThePlaceOfJsonIsToldWithItsTitle) {
    expectOf(reply("200 OK", signIn, isHtml), {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✓ fetched   200, text/html, 50 bytes, # ms
  ✗ format    an HTML page titled "Sign in"
              The query type is JSON, and the source is an HTML page titled "Sign in".
              Look at the address in a browser: a server sends a page when a login has expired, or when the address is another one.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, ALoginPageBehindARedirectIsToldWithTheWay) {
    ScriptedServer server([](const std::string& request) {
        return request.starts_with("GET /login") ? reply("200 OK", signIn, isHtml)
                                                 : reply("302 Found", "", "Location: /login\r\n");
    });
    expectOf(server.url("/clubs"), {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✓ fetched   200, text/html, 50 bytes, # ms; sent on (302) to http://SERVER/login
  ✗ format    an HTML page titled "Sign in"
              The query type is JSON, and the source is an HTML page titled "Sign in". The server sent the request on to http://SERVER/login.
              Look at the address in a browser: a server sends a page when a login has expired, or when the address is another one.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, APackedAnswerIsToldAndComesUnpackedWhenItIsAskedForSo) {
    ScriptedServer server([](const std::string& request) {
        const bool isPlain = request.find("Accept-Encoding: identity") != std::string::npos;
        return isPlain ? reply("200 OK", clubs, isJson)
                       : reply("200 OK", intake::packed(clubs), "Content-Encoding: gzip\r\n");
    });
    expectOf(server.url("/clubs"), {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✓ fetched   200, 58 bytes, # ms
  ✗ format    compressed (gzip)
              The query type JSON takes a source as it comes and does not unpack it.
              Have the server send it as it is: set "Use Custom Headers" (useCustomHeaders) and "Custom Headers" (customHeaders).
  – selection, key, rows, script, store: not reached
  Try: --set useCustomHeaders=1 --set 'customHeaders=Accept-Encoding: identity'   (2 records, checked)
)");
}

TEST_F(ExplainedUrl, AnAnswerThatIsCutIsTold) {
    expectOf(Reply{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n[{\"id\":", Then::CUT}, {},
             R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched
              The source did not come: the server broke the connection off; 7 bytes came.
              Try again; if it stays so, ask those who run the server.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, AServerThatIsNotThereIsTold) {
    expectOf("http://127.0.0.1:" + std::to_string(intake::freePort()) + "/clubs", {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✗ address   http://SERVER/clubs
              The source cannot be reached: nothing answers at that address (SERVER).
              Check server and port in "File Name" (filename), that the server runs, and that no firewall keeps it from this machine.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, AServerThatNobodyKnowsIsTold) {
    expectOf("http://graphics.invalid/clubs", {}, R"(
http://graphics.invalid/clubs: no records, # s
  ✓ settings
  ✗ address   http://graphics.invalid/clubs
              The source names a server that nobody knows: graphics.invalid.
              Check the spelling of graphics.invalid in "File Name" (filename), and that this machine reaches its name server.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedUrl, TheFirstQueryTypeInTheListReadsNoAddresses) {
    ScriptedServer server(always(reply("200 OK", clubs, isJson)));
    expectExplained({"filename=" + server.url("/clubs"), "table=Team", "key=id", "xpath=*"},
                    R"(
http://SERVER/clubs: no records, # s
  ✗ settings
              The query type is EXCEL, the first in the list, which reads files only, and "File Name" (filename) is an address.
              Set "Query type: " (queryMode) to what the source is.
  – address, fetched, format, selection, key, rows, script, store: not reached
  Try: --set queryMode=JSON   (2 records, checked)
)");
}

TEST_F(ExplainedUrl, TheTitleOfAPageIsReadInThePagesEncoding) {
    ScriptedServer server(
        always(reply("200 OK", "<html><head><title>M\xFCnchen, anmelden</title></head></html>",
                     "Content-Type: text/html; charset=iso-8859-1\r\n")));
    const Explained explained(explain({"queryMode=JSON", "filename=" + server.url("/clubs"),
                                       "table=Team", "key=id", "xpath=*"},
                                      {"--out", "json"})
                                  .out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->seen, "an HTML page titled \"München, anmelden\"");
}

TEST_F(ExplainedUrl, ADatabaseWithoutAConnectionIsTold) {
    expectOf(reply("200 OK", clubs, isJson), {"queryMode=SQL"}, R"(
http://SERVER/clubs: no records, # s
  ✗ settings
              The query type is SQL, and "Connection String" (connStr) is empty.
              Set it to the database, or "Query type: " (queryMode) to what the source is.
  – address, fetched, format, selection, key, rows, script, store: not reached
  Try: --set queryMode=JSON   (2 records, checked)
)");
}
