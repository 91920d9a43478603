// What `explain` says of the keys and the rows of records in JSON.

#include "tests/workbench/cli/linux/ExplainedJson.h"

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
  Try: --set numRows=2   (2 records, checked)
)");
}

TEST_F(ExplainedJson, ANumberOfRowsBelowZeroIsTold) {
    expectOfLeague({"numRows=-3"}, R"(
league.json: no records, # s
  ✗ settings
              "Number of rows" (numRows) is -3, which is below 0.
              Set it to how many are wanted, or leave it empty for all.
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

TEST_F(ExplainedJson, NumbersOfRowsMayHaveASign) {
    expectOfLeague({"fromRow=+1", "numRows=+2"}, R"(
league.json: 2 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✓ key       id
  ✓ rows      2 of 3: numbers 1 to 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedJson, AFirstRowBeyondAnyNumberIsTold) {
    expectOfLeague({"fromRow=99999999999"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   334 bytes
  ✓ format    JSON
  ✓ selection data / standings / rows: 3 objects
  ✗ rows      from 2147483647
              There are 3 records, 0 to 2.
              Set "From row" (fromRow) to the first one that is wanted.
  – key: not looked at
  – script, store: not reached
  Try: --set fromRow=   (3 records, checked)
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
