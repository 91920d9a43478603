// What `explain` says of paths into JSON.

#include "tests/workbench/cli/linux/ExplainedJson.h"

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

TEST_F(ExplainedJson, OfTheWholeDocumentTheLargestArrayIsProposed) {
    expectOf(R"({"a":[{"id":1},{"id":2}],"b":[{"id":1},{"id":2},{"id":3}]})", {"xpath="}, R"(
league.json: 1 record, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   58 bytes
  ✓ format    JSON
  ! selection the whole document
              "XPath" (xpath) is empty: the document is written as one value, and no records are counted.
              Set "XPath" (xpath) to the path of the records.
  ✓ store
  – key, rows, script: not looked at
  Try: --set xpath=b   (3 records, checked)
)");
}

TEST_F(ExplainedJson, ADocumentThatIsAnArrayIsProposedByAStar) {
    expectOf(R"([{"id":1},{"id":2}])", {"xpath=a/b"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   19 bytes
  ✓ format    JSON
  ✗ selection a / b
              ^ The document is an array, whose elements have no names; "*" takes them all.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set 'xpath=*'   (2 records, checked)
)");
}

TEST_F(ExplainedJson, AMisspeltNameKeepsItsElement) {
    expectOf(R"({"data": {"rows": [{"id": 1}, {"id": 2}]}})", {"xpath=data/row[1]"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   42 bytes
  ✓ format    JSON
  ✗ selection data / row[1]
                     ^^^^^^ "data" has no member "row". It has: rows.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set 'xpath=data/rows[1]'   (1 record, checked)
)");
}

TEST_F(ExplainedJson, OfSeveralArraysTheLongestIsTold) {
    expectOf(R"({"a":[{"b":[1,2,3]},{"b":[1]}]})", {"xpath=a/b[5]", "mode=DataArray"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   31 bytes
  ✓ format    JSON
  ✗ selection a / b[5]
                  ^^^^ "b" has 3 elements, counted from 0.
              Set "XPath" (xpath) to a path of names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=a/b   (4 records, checked)
)");
}
