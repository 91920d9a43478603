// What `explain` says of what is written of JSON, and of what is done with it.

#include "tests/workbench/cli/linux/ExplainedJson.h"

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

TEST_F(ExplainedJson, WhatWouldBreakAScriptMayStandInASharedMemory) {
    expectOf(R"([",a", "b"])", {"mode=Shared Memory", "shmvar=Top", "delimiter=|", "xpath=*"}, R"(
league.json: 2 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   11 bytes
  ✓ format    JSON
  ✓ selection *: 2 texts
  ✓ key       none is needed
  ✓ rows      all 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedJson, AScriptThatIsNestedTooDeepIsToldByTheStore) {
    expectOf(R"({"r": [{"id": 1, "deep": )" + std::string(600, '[') + std::string(600, ']') + "}]}",
             {"xpath=r"}, R"(
league.json: no records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   1.2 kB
  ✓ format    JSON
  ✓ selection r: 1 object
  ✓ key       id
  ✓ rows      all 1
  ✓ script
  ✗ store
              The data store cannot execute the script: line 1, column 3512: expected at most 500 nested braces.
              See what the stage before says of names and values.
)");
}

TEST_F(ExplainedJson, AStructureWithNeitherKeyNorFieldIsTold) {
    expectOfLeague({"mode=DataStructure", "table=", "key="}, R"(
league.json: no records, # s
  ✗ settings
              "Key" (key) and "CB Field Name" (table) are both empty: nothing says where the records go.
              Set "Key" (key) to what names a record, or "CB Field Name" (table) to the name of a field of the data store.
  – address, fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedJson, AKeyThatNamesNoStructureIsAWarning) {
    expectOf(R"({"r": [{"id": "a=b", "v": 1}, {"id": "1-3", "v": 2}]})",
             {"mode=DataStructure", "xpath=r"}, R"(
league.json: 3 records, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   53 bytes
  ✓ format    JSON
  ✓ selection r: 2 objects
  ✓ key       id
  ✓ rows      all 2
  ! script    names and values are copied as they are
              The key "a=b" cannot stand in a script as a name.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✓ store
)");
}

TEST_F(ExplainedJson, ANameThatComesTwiceIsAWarning) {
    expectOf(R"({"r": [{"id": 1, "a": "x", "a": "y"}]})", {"xpath=r"}, R"(
league.json: 1 record, # s
  ✓ settings
  ✓ address   league.json
  ✓ fetched   38 bytes
  ✓ format    JSON
  ✓ selection r: 1 object
  ✓ key       id
  ✓ rows      all 1
  ! script    names and values are copied as they are
              The name "a" comes twice in a record; the last value counts.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✓ store
)");
}
