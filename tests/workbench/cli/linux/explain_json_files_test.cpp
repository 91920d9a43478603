// What `explain` says of files, by the example of JSON.

#include "tests/workbench/cli/linux/ExplainedJson.h"

TEST_F(ExplainedJson, AFileThatIsCutIsTold) {
    expectOf(std::string(league).substr(0, 150), {}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   150 bytes
  ✗ format    JSON that is not whole or not right
              line 5, column 19: Missing a closing quotation mark in string. The text ends there: it is cut off.
              Fetch it again, or ask whoever writes it.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AFileWithAMistakeIsTold) {
    expectOf("{\"data\": {\n  \"a\": 1,\n}}", {}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   23 bytes
  ✗ format    JSON that is not whole or not right
              line 3, column 1: Missing a name for object member.
              Have the source mended.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AFileThatIsEmptyIsTold) {
    expectOf("", {}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   0 bytes
  ✗ format    empty
              The source is empty: it has not one character.
              Wait until it is written, or ask whoever writes it.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AFileInLatin1IsTold) {
    expectOf("{\"data\": {\"standings\": {\"rows\": [{\"id\": 1, \"name\": \"K\xF8ge\"}]}}}", {},
             R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   62 bytes
  ✗ format    JSON, not in UTF-8
              line 1, column 54: Invalid encoding in string. JSON is read in UTF-8 only; this text is in another encoding, such as ISO-8859-1.
              Have the source written in UTF-8.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AFileThatIsPackedIsTold) {
    expectOf("\x1F\x8B\x08" + std::string(40, '\0'), {}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   43 bytes
  ✗ format    compressed (gzip)
              The query type JSON takes a source as it comes and does not unpack it.
              Unpack the file.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AFileThatIsNotThereIsToldWithItsPlace) {
    expectOfLeague({"filename=absent.json"}, R"(
absent.json: no records, # s
  ✓ settings
  ✗ address   absent.json
              The source is not there; it was looked for as FOLDER/absent.json.
              Correct "File Name" (filename). A path that does not begin at the root starts at the folder in which the host was started.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AFileThatStandsBesideTheSceneIsProposed) {
    std::filesystem::create_directories(folder / "show");
    write("show/top.json", league);
    write("show/evening.scene.json", R"({"instances": [{"name": "Top", "parameters": {
        "queryMode": "JSON", "filename": "top.json", "key": "id", "table": "Team",
        "xpath": "data/standings/rows"}}]})");
    expectExplained({}, R"(
Top: no records, # s
  ✓ settings
  ✗ address   top.json
              The source is not there; it was looked for as FOLDER/top.json.
              Correct "File Name" (filename). A path that does not begin at the root starts at the folder in which the host was started.
  – fetched, format, selection, key, rows, script, store: not reached
  Try: --set filename=show/top.json   (3 records, checked)
)",
                    {"--scene", "show/evening.scene.json", "--instance", "Top"});
}

TEST_F(ExplainedJson, AFolderIsNoSource) {
    expectOfLeague({"filename=."}, R"(
.: no records, # s
  ✓ settings
  ✗ address   .
              The source is a folder.
              Set "File Name" (filename) to a file in this folder.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, NoSourceIsTold) {
    expectOfLeague({"filename="}, R"(
workbench: no records, # s
  ✗ settings
              "File Name" (filename) is empty: nothing says where the source is.
              Set it to a file or to an address.
  – address, fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AFileGivenAsAnAddressIsMended) {
    expectOfLeague(
        {"filename=file://" + std::filesystem::canonical(folder).string() + "/league.json"},
        R"(
file://FOLDER/league.json: no records, # s
  ✓ settings
  ✗ address   file://FOLDER/league.json
              The source is a file given as an address, which is not read for JSON.
              Set "File Name" (filename) to the path alone: FOLDER/league.json.
  – fetched, format, selection, key, rows, script, store: not reached
  Try: --set filename=FOLDER/league.json   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AnFtpAddressIsNotRead) {
    expectOfLeague({"filename=ftp://127.0.0.1:1/league.json"}, R"(
ftp://SERVER/league.json: no records, # s
  ✓ settings
  ✗ address   ftp://SERVER/league.json
              The source is an FTP address, which is read for XML and HTML only, not for JSON.
              Copy the file to this machine, and set "File Name" (filename) to its path.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AnAddressInCapitalsIsMended) {
    expectOfLeague({"filename=HTTP://127.0.0.1:1/league.json"}, R"(
HTTP://SERVER/league.json: no records, # s
  ✓ settings
  ✗ address   HTTP://SERVER/league.json
              The source is taken for a file, because HTTP:// is not in lower case.
              Begin "File Name" (filename) with http://.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, InUtf16IsTold) {
    expectOf(std::string("[\0{\0}\0]\0", 8), {"xpath=*", "key=id"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   8 bytes
  ✗ format    JSON, in UTF-16
              The document is not in UTF-8. JSON is read in UTF-8 only; this text is in UTF-16.
              Have the source written in UTF-8.
  – selection, key, rows, script, store: not reached
)");
}
