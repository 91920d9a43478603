// What `explain` says of JSON.

#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

constexpr const char* league = R"({
  "data": {
    "standings": {"rows": [
      {"id": 7, "name": "Harbour", "group": "A", "points": 12, "coach": {"name": "Ada"}},
      {"id": 9, "name": "Quay", "group": "B", "points": 9, "coach": {"name": "Bo"}},
      {"id": 11, "name": "Pier", "group": "A", "points": 4, "coach": {"name": "Cy"}}
    ]},
    "fixtures": []
  }
})";

class ExplainedJson : public ExplainTest {
protected:
    ExplainedJson() { write("league.json", league); }

    /// Explains the load of the league's table.
    void expectOfLeague(const Settings& settings, const std::string& text) const {
        expectExplained(joined({"queryMode=JSON", "filename=league.json", "table=Team", "key=id",
                                "xpath=data/standings/rows"},
                               settings),
                        text);
    }

    /// Explains the load of a file with this in it.
    void expectOf(const std::string& content, const Settings& settings,
                  const std::string& text) const {
        write("league.json", content);
        expectOfLeague(settings, text);
    }
};

}  // namespace

TEST_F(ExplainedJson, ThatLoadsHasATickAtEachStage) {
    expectOfLeague({}, R"(
league.json: 3 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✓ key       id
  ✓ rows      all 3
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedJson, APathWrongInOneLetterIsMarkedThere) {
    expectOfLeague({"xpath=data/standing/rows"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection data / standing / rows
                     ^^^^^^^^ "data" has no member "standing". It has: standings, fixtures.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=data/standings/rows   (3 records, checked)
)");
}

TEST_F(ExplainedJson, APathInOtherLetterCaseIsNotFound) {
    expectOfLeague({"xpath=Data/standings/ROWS"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection Data / standings / ROWS
              ^^^^ The document has no member "Data". It has: data.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=data/standings/rows   (3 records, checked)
)");
}

TEST_F(ExplainedJson, APathInJsonPathIsWrittenWithSlashes) {
    expectOfLeague({"xpath=$.data.standings.rows[0]"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection $.data.standings.rows[0]
              ^^^^^^^^^^^^^^^^^^^^^^^^ The document has no member "$.data.standings.rows". It has: data. In a path of the plugin, slashes stand between the names.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set 'xpath=data/standings/rows[0]'   (1 record, checked)
)");
}

TEST_F(ExplainedJson, APathInJsonPathWithABracketForAllIsWrittenWithSlashes) {
    expectOfLeague({"xpath=$['data'].standings.rows[*]"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection $['data'].standings.rows[*]
              ^^^^^^^^^^^^^^^^^^^^^^^^^^^ The document has no member "$". It has: data. In a path of the plugin, slashes stand between the names.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=data/standings/rows   (3 records, checked)
)");
}

TEST_F(ExplainedJson, APathWithDotsIsWrittenWithSlashes) {
    expectOfLeague({"xpath=data.standings.rows"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection data.standings.rows
              ^^^^^^^^^^^^^^^^^^^ The document has no member "data.standings.rows". It has: data. In a path of the plugin, slashes stand between the names.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=data/standings/rows   (3 records, checked)
)");
}

TEST_F(ExplainedJson, APathThatStopsShortOfTheRecordsIsTold) {
    expectOfLeague({"xpath=data/rows"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection data / rows
                     ^^^^ "data" has no member "rows". It has: standings, fixtures.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=/rows   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AnIndexBehindTheEndIsToldWithTheNumberThatIsThere) {
    expectOfLeague({"xpath=data/standings/rows[3]"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection data / standings / rows[3]
                                 ^^^^^^^ "rows" has 3 elements, counted from 0.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=data/standings/rows   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AFilterThatNothingMeetsIsToldWithTheValuesThatAreThere) {
    expectOfLeague({"xpath=data/standings/rows[@group=C]"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection data / standings / rows[@group=C]
                                 ^^^^^^^^^^^^^^ Nothing in "rows" has "C" for its "group". There are: A, B.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=data/standings/rows   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AStepBelowATextIsTold) {
    expectOfLeague({"xpath=data/standings/rows/name/first"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection data / standings / rows / name / first
                                               ^^^^^ "name" is a text and has no members.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=data/standings/rows   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AnEmptyPathLoadsTheWholeDocument) {
    expectOfLeague({"xpath="}, R"(
league.json: 1 record, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ! selection the whole document
              "XPath" (xpath) is empty: the document is written as one value, and no records are counted.
              Set "XPath" (xpath) to the path of the records.
  ✓ store
  – key, rows, script: not looked at
  Try: --set xpath=data/standings/rows   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AnArrayWithoutANameIsTakenByAStar) {
    expectOf(R"([{"id": 1}, {"id": 2}])", {"xpath=rows"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   22 bytes
  ✓ format    JSON
  ✗ selection rows
              ^^^^ The document is an array, whose elements have no names; "*" takes them all.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set 'xpath=*'   (2 records, checked)
)");
}

TEST_F(ExplainedJson, AKeyIsNeededForADataTable) {
    expectOfLeague({"key="}, R"(
league.json: no records, # s
  ✗ settings
              "Key" (key) is empty, and this form of field needs one.
              Set it to what names a record, or "Field is a: " (mode) to DataArray.
  – address, fetched, format, selection, key, rows, script, store: not reached
  Try: --set key=id   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AKeyThatNoRecordHasIsToldWithThoseThatAreThere) {
    expectOfLeague({"key=club"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✗ key       club
              None of the 3 records has a member "club", so all are left out. They have: id, name, group, points, coach.
              Set "Key" (key) to a member that names a record.
  – rows, script, store: not reached
  Try: --set key=id   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AKeyWrongInOneLetterIsMended) {
    expectOfLeague({"key=nane"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✗ key       nane
              None of the 3 records has a member "nane", so all are left out. They have: id, name, group, points, coach.
              Set "Key" (key) to a member that names a record.
  – rows, script, store: not reached
  Try: --set key=name   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AKeyThatSomeRecordsLackLeavesThemOut) {
    expectOf(R"({"data": {"standings": {"rows": [{"id": 1}, {"ID": 2}, {"id": 3}]}}})", {}, R"(
league.json: 2 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   68 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ! key       id
              1 of 3 records has no such member and is left out.
  ✓ rows      all 3
  ✓ script
  ✓ store
  Try: --set mode=DataArray   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AKeyThatRepeatsOverwrites) {
    expectOfLeague({"key=group"}, R"(
league.json: 2 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ! key       group
              The keys are not unique: 1 record of 3 takes the place of an earlier one with the same key: A. 2 records are left.
              Set "Key" (key) to a member that differs from record to record, or "Field is a: " (mode) to DataArray.
  ✓ rows      all 3
  ✓ script
  ✓ store
  Try: --set key=id   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AKeyThatIsAnObjectIsNone) {
    expectOfLeague({"key=coach"}, R"(
league.json: 1 record, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✗ key       coach
              The member "coach" is an object or an array, which gives no text for a key.
              Set "Key" (key) to a member with a text or a number.
  – rows, script, store: not reached
  Try: --set key=id   (3 records, checked)
)");
}

TEST_F(ExplainedJson, ADataFieldArrayTakesNothingOfObjects) {
    expectOfLeague({"mode=Data Field Array"}, R"(
league.json: 3 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✗ selection data / standings / rows
              The records are objects, of which a Data Field Array takes nothing: it takes single values. They have: id, name, group, points, coach.
              Add the name of a member to "XPath" (xpath), or set "Field is a: " (mode) to DataArray.
  – key, rows, script, store: not reached
  Try: --set xpath=data/standings/rows/id   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AFirstRowBehindTheEndIsTold) {
    expectOfLeague({"fromRow=3"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✗ rows      from 3
              There are 3 records, 0 to 2.
              Set "From row" (fromRow) to the first one that is wanted.
  – key: not looked at
  – script, store: not reached
  Try: --set fromRow=   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AFirstRowThatIsNoNumberIsTold) {
    expectOfLeague({"fromRow=second"}, R"(
league.json: 3 records, # s
  ✗ settings
              "From row" (fromRow) is "second", which is no number; the plugin takes 0, the first.
              Set it to a number, or leave it empty.
  – address, fetched, format, selection, key, rows, script, store: not reached
  Try: --set fromRow=   (3 records, checked)
)");
}

TEST_F(ExplainedJson, ANumberOfRowsThatGoesOnAsATextIsTold) {
    expectOfLeague({"numRows=2 rows"}, R"(
league.json: 2 records, # s
  ✗ settings
              "Number of rows" (numRows) is "2 rows", which is no number; the plugin takes 2.
              Set it to a number, or leave it empty.
  – address, fetched, format, selection, key, rows, script, store: not reached
  Try: --set numRows=   (3 records, checked)
)");
}

TEST_F(ExplainedJson, AFirstRowBelowZeroIsTold) {
    expectOfLeague({"fromRow=-1"}, R"(
league.json: 3 records, # s
  ✗ settings
              "From row" (fromRow) is -1, which is below 0.
              Rows are counted from 0.
  – address, fetched, format, selection, key, rows, script, store: not reached
  Try: --set fromRow=   (3 records, checked)
)");
}

TEST_F(ExplainedJson, RowsInTheMiddleAreTold) {
    expectOfLeague({"fromRow=1", "numRows=1"}, R"(
league.json: 1 record, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✓ key       id
  ✓ rows      1 of 3: number 1
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedJson, AnArrayThatIsThereAndEmptyIsFine) {
    expectOfLeague({"xpath=data/fixtures"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / fixtures: 0 records: the array is there and is empty; the source is fine
  ✓ rows      no record
  ✓ store
  – key, script: not looked at
)");
}

TEST_F(ExplainedJson, ADocumentThatIsAnEmptyArrayIsFine) {
    expectOf("[]", {"xpath=*"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   2 bytes
  ✓ format    JSON
  ✓ selection *: 0 records: the array is there and is empty; the source is fine
  ✓ rows      no record
  ✓ store
  – key, script: not looked at
)");
}

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

TEST_F(ExplainedJson, AValueThatEndsItsFrameMayKeepTheStoreFromExecutingTheScript) {
    expectOf(R"({"data": {"standings": {"rows": [{"id": 1, "name": "the \"\";\"\" end"}]}}})", {},
             R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   75 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 1 object
  ✓ key       id
  ✓ rows      all 1
  ! script    names and values are copied as they are
              The value "the "";"" end" of "name" ends its own frame.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✗ store
              The data store cannot execute the script: line 1, column 30: expected an assignment such as name=value;, found '"" end"";},};'.
              See what the stage before says of names and values.
)");
}

TEST_F(ExplainedJson, AValueThatCarriesOnBehindItsFrameIsAWarning) {
    expectOf(
        R"({"data": {"standings": {"rows": [{"id": 1, "name": "x\"\";},};Score=1;T[2]={{a=\"\"9"}]}}})",
        {},
        R"(
league.json: 2 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   90 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 1 object
  ✓ key       id
  ✓ rows      all 1
  ! script    names and values are copied as they are
              The value "x"";},};Score=1;T[2]={{a=""9" of "name" ends its own frame. What is behind its end is carried out: it sets Score, T.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✓ store
)");
}

TEST_F(ExplainedJson, AValueThatAddsAMemberIsAWarning) {
    expectOf(R"({"data": {"standings": {"rows": [{"id": 1, "name": "x\"\";Score=\"\"9"}]}}})", {},
             R"(
league.json: 1 record, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   75 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 1 object
  ✓ key       id
  ✓ rows      all 1
  ! script    names and values are copied as they are
              The value "x"";Score=""9" of "name" ends its own frame. What is behind its end is carried out: it sets Score.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✓ store
)");
}

TEST_F(ExplainedJson, AValueThatBreaksAFieldArrayIsAWarning) {
    expectOf(R"(["a", "b\"\",\"\"c", "d"])", {"mode=Data Field Array", "xpath=*"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   25 bytes
  ✓ format    JSON
  ✓ selection *: 3 texts
  ✓ key       none is needed
  ✓ rows      all 3
  ! script    names and values are copied as they are
              The value "b"",""c" ends its own frame.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✗ store
              The data store cannot execute the script: line 1, column 11: expected at most 3 values for the range [0-2], found 4.
              See what the stage before says of names and values.
)");
}

TEST_F(ExplainedJson, ANameThatAScriptCannotCarryIsAWarning) {
    expectOf(R"({"data": {"standings": {"rows": [{"id": 1, "a=b": "x"}]}}})", {}, R"(
league.json: 1 record, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   58 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 1 object
  ✓ key       id
  ✓ rows      all 1
  ! script    names and values are copied as they are
              The name "a=b" cannot stand in a script as it is.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✓ store
)");
}

TEST_F(ExplainedJson, NoFieldForTheRecordsIsTold) {
    expectOfLeague({"table="}, R"(
league.json: no records, # s
  ✗ settings
              "CB Field Name" (table) is empty: nothing says where the records go.
              Set it to the name of a field of the data store.
  – address, fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AnActionThatCannotBeReadIsTold) {
    expectOfLeague({"postAction=Shown = Team[7].nothing;"}, R"(
league.json: 3 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✓ key       id
  ✓ rows      all 3
  ✓ script
  ✓ store
  ✗ action    Shown = Team[7].nothing;
              It cannot be read: line 1, column 16: expected an operator or ';', found '.nothing;'.
              Mend "Post Update Action" (postAction).
)");
}

TEST_F(ExplainedJson, AnActionThatFailsIsTold) {
    expectOfLeague({"postAction=Shown = 1/0;"}, R"(
league.json: 3 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✓ key       id
  ✓ rows      all 3
  ✓ script
  ✓ store
  ✗ action    Shown = 1/0;
              It failed: line 1, column 10: division by zero.
              Mend "Post Update Action" (postAction).
)");
}

TEST_F(ExplainedJson, AnActionThatIsCarriedOutIsShown) {
    expectOfLeague({"postAction=Shown = 1;"}, R"(
league.json: 3 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✓ key       id
  ✓ rows      all 3
  ✓ script
  ✓ store
  ✓ action    Shown = 1;
)");
}

TEST_F(ExplainedJson, ASharedMemoryThatIsNotBoundIsTold) {
    const std::string shown =
        run({"explain", "--set", "queryMode=JSON", "--set", "filename=league.json", "--set",
             "mode=Shared Memory", "--set", "xpath=data/standings/rows/name"})
            .out;
    EXPECT_NE(shown.find("No shared memory is bound, so nothing is stored."), std::string::npos)
        << shown;
}

TEST_F(ExplainedJson, ASharedMemoryOfASceneIsBound) {
    write("stored.scene.json", R"({"instances": [{"name": "Top", "parameters": {
        "queryMode": "JSON", "filename": "league.json", "mode": "Shared Memory",
        "shmvar": "Top", "shmtype": 0, "delimiter": "|",
        "xpath": "data/standings/rows/name"}}]})");
    expectExplained({}, R"(
league.json: 3 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows / name: 3 texts
  ✓ key       none is needed
  ✓ rows      all 3
  ✓ script
  ✓ store
)",
                    {"--scene", "stored.scene.json"});
}

TEST_F(ExplainedJson, ASharedMemoryTakesTexts) {
    expectOfLeague(
        {"mode=Shared Memory", "shmvar=Top", "delimiter=|", "xpath=data/standings/rows/name"},
        R"(
league.json: 3 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows / name: 3 texts
  ✓ key       none is needed
  ✓ rows      all 3
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedJson, RecordsThatAreAllWrittenToOneStructureAreAWarning) {
    expectOf(R"([{"id": 7}, {"id": 9}])", {"xpath=*", "mode=DataStructure", "key="}, R"(
league.json: 1 record, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   22 bytes
  ✓ format    JSON
  ✓ selection *: 2 objects
  ! key       none is used
              All 2 records are written to the same structure, and each takes the place of the one before. The last is left.
              Set "Field is a: " (mode) to DataArray, or load just one.
  ✓ rows      all 2
  ✓ script
  ✓ store
  Try: --set mode=DataArray   (2 records, checked)
)");
}

TEST_F(ExplainedJson, AnIndexBehindTheEndIsMendedWithoutIt) {
    expectOf(R"({"a": [{"id": 7}], "b": [{"id": 8}, {"id": 9}]})", {"xpath=a[9]", "key=id"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   47 bytes
  ✓ format    JSON
  ✗ selection a[9]
              ^^^^ "a" has 1 element, counted from 0.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=a   (1 record, checked)
)");
}

TEST_F(ExplainedJson, AParentIsTakenForWhatItMeansElsewhere) {
    expectOf(R"({"a": {"b": [{"id": 8}]}, "c": [{"id": 9}]})", {"xpath=a/b/../../c", "key=id"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   43 bytes
  ✓ format    JSON
  ✗ selection a / b / .. / .. / c
                      ^^ "b" has no member "..". It has: id.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=c   (1 record, checked)
)");
}

TEST_F(ExplainedJson, TheRootIsShown) {
    expectOf(R"({"id": 7})", {"xpath=/", "key=id"}, R"(
league.json: 1 record, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   9 bytes
  ✓ format    JSON
  ✓ selection /: 1 object
  ✓ key       id
  ✓ rows      all 1
  ✓ script
  ✓ store
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
