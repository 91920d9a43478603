// `load` from end to end: the workbench, the plugin and a source.

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/workbench/cli/Workbench.h"

namespace {

struct Load : Workbench {
    Load() {
        write("league.json",
              R"({"table": [{"club": "ARS", "name": "Arsenal", "pts": 7.50},
                            {"club": "MCI", "name": "City", "pts": 1234567}]})");
    }

    // The table of league.json in a target mode.
    ChildResult loadTable(std::vector<std::string> settings, std::vector<std::string> more = {}) {
        settings.insert(settings.begin(),
                        {"queryMode=JSON", "filename=league.json", "xpath=table", "table=T"});
        return load(settings, more);
    }

    void writeScene(const std::string& parameters) {
        write("scene.json",
              R"({"instances": [{"name": "league", "parameters": {"Magic": 9473, "queryMode": 3,
                  "filename": "league.json", "table": "T", )" +
                  parameters + "}}]}");
    }
};

}  // namespace

TEST_F(Load, ATableByKey) {
    const ChildResult result = loadTable({"mode=DataTable", "key=club"}, {"--out", "script"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "T[ARS]={{club=\"\"ARS\"\";name=\"\"Arsenal\"\";pts=7.5;},};"
              "T[MCI]={{club=\"\"MCI\"\";name=\"\"City\"\";pts=1.23457e+06;},};");
    EXPECT_EQ(result.err, "");
}

TEST_F(Load, ThatBringsNothingSaysWhatTellsWhy) {
    const ChildResult result = loadTable({"xpath=tables", "mode=DataTable", "key=club"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "The store is empty.\n");
    EXPECT_EQ(result.err,
              "Nothing was loaded; intake-workbench explain with the same settings says why.\n");
}

TEST_F(Load, AnArrayByRowNumber) {
    const ChildResult result = loadTable({"mode=1", "fromRow=1"}, {"--out", "script"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "T[0]={{club=\"\"MCI\"\";name=\"\"City\"\";pts=1.23457e+06;},};"
              "; READER_NUM_RECORDS=1;");
}

TEST_F(Load, StructuresByKey) {
    const ChildResult result =
        loadTable({"mode=DataStructure", "key=club", "numRows=1"}, {"--out", "json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "{\n"
              "  \"ARS\": {\n"
              "    \"club\": \"ARS\",\n"
              "    \"name\": \"Arsenal\",\n"
              "    \"pts\": 7.5\n"
              "  },\n"
              "  \"READER_NUM_RECORDS\": 1\n"
              "}\n");
}

TEST_F(Load, AFieldArray) {
    const ChildResult result =
        loadTable({"mode=Data Field Array", "xpath=table/club"}, {"--out", "script"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "T[0-1]=\"\"ARS\"\",\"\"MCI\"\"; READER_NUM_RECORDS=2;");
}

TEST_F(Load, SharedMemoryHoldsTheTextOnceTheVariableWasSet) {
    const ChildResult result =
        loadTable({"mode=Shared Memory", "xpath=table/club", "delimiter=;", "shmvar=CLUBS"},
                  {"--out", "script"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "ARS;MCI");
}

TEST_F(Load, SharedMemoryThatWasChosenAfterBindingStoresNothing) {
    const ChildResult result = loadTable({"mode=Shared Memory", "xpath=table/club"});
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.out, "The store is empty.\n");
    EXPECT_EQ(result.err,
              "Nothing was stored: no shared memory is bound. It is bound when shmvar or shmtype "
              "changes, so set one of them.\n");
}

TEST_F(Load, SharedMemoryThatASceneStoredIsBoundAtOnce) {
    writeScene(R"("mode": 4, "xpath": "table/club", "shmtype": "Global", "shmvar": "CLUBS")");
    const ChildResult result = run({"load", "--scene", "scene.json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "Shared memory (global)\nvariable  value\n--------  -------\nCLUBS     ARS|MCI\n");
}

TEST_F(Load, TheTableIsForPeople) {
    const ChildResult result = loadTable({"mode=DataArray"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "T (2 records)\n"
              "index  club  name             pts\n"
              "-----  ----  -------  -----------\n"
              "    0  ARS   Arsenal          7.5\n"
              "    1  MCI   City     1.23457e+06\n"
              "\n"
              "field               value\n"
              "------------------  -----\n"
              "READER_NUM_RECORDS      2\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(Load, TheTraceEndsWithTheExecutionOfTheAnswer) {
    const ChildResult result =
        loadTable({"mode=3", "xpath=table/club", "postAction=A=1"}, {"--out", "trace"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.starts_with("evSetPersistent(1)\nDataSetPrintfFunction(_lumoprintf)\n"))
        << result.out;
    EXPECT_NE(result.out.find("evRegisterParameterBool(\"useAuth\", \"Use Authentication\", 0)\n"),
              std::string::npos);
    const std::string end =
        "IDataHandler::getCobalt()\n"
        "Cobalt::executeScript(\"T[0-1]=\\\"\\\"ARS\\\"\\\",\\\"\\\"MCI\\\"\\\"; "
        "READER_NUM_RECORDS=2;\", 0)\n"
        "_api__get_sceneid_local()\n"
        "IDataHandlerImpl::getCobalt(1, 0)\n"
        "DataExpression::executeExtended(Cobalt, _api__lumo_send_command, 0)\n";
    EXPECT_TRUE(result.out.ends_with(end)) << result.out;
    EXPECT_EQ(result.out.find("READER_CONSOLE"), std::string::npos) << result.out;
}

TEST_F(Load, TheConsoleVariableIsWrittenWhenTheUserAskedForIt) {
    const ChildResult result =
        loadTable({"mode=3", "xpath=table/club", "varsPrefix=A_", "show_data=1"},
                  {"--define", "A_READER_CONSOLE", "--out", "json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "{\n"
              "  \"A_READER_CONSOLE\": \"T[0-1]=\\\"\\\"ARS\\\"\\\",\\\"\\\"MCI\\\"\\\"; "
              "A_READER_NUM_RECORDS=2;\",\n"
              "  \"T\": [\n"
              "    \"ARS\",\n"
              "    \"MCI\"\n"
              "  ],\n"
              "  \"A_READER_NUM_RECORDS\": 2\n"
              "}\n");
}

TEST_F(Load, ThePostUpdateActionReadsWhatWasLoadedAndSendsCommands) {
    const ChildResult result =
        loadTable({"mode=3", "xpath=table/club",
                   "postAction=Next=READER_NUM_RECORDS+1;command(\"SCENE*play \"+Next)"},
                  {"--out", "json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("\"Next\": 3"), std::string::npos) << result.out;
    EXPECT_EQ(result.err, "Host command: SCENE*play 3\n");
}

TEST_F(Load, APostUpdateActionThatDoesNotParseIsReportedOnce) {
    const ChildResult result = loadTable({"mode=1", "postAction=A=("});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.err.starts_with("The action \"A=(\" does not parse: line 1, column "))
        << result.err;
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
}

TEST_F(Load, AMissingFileIsAFailureThatNamesIt) {
    const ChildResult result =
        load({"queryMode=JSON", "filename=absent.json"}, {"--out", "script"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "READER_NUM_RECORDS=0;");
    EXPECT_TRUE(result.err.ends_with("Could not load \"absent.json\"\n")) << result.err;
}

TEST_F(Load, AMissingFileIsToldWithTheFolderInWhichItWasLookedFor) {
    const std::string place = (std::filesystem::canonical(folder) / "a" / "absent.json").string();
    const std::string advice = "a/absent.json was looked for as " + place + ".\n";
    for (const char* query : {"queryMode=JSON", "queryMode=XML", "queryMode=EXCEL"}) {
        const ChildResult result = load({query, "filename=a/absent.json", "sheet=A"});
        EXPECT_EQ(result.status, 1) << query;
        EXPECT_NE(result.err.find(advice), std::string::npos) << result.err;
    }
    const ChildResult absolute = load({"queryMode=JSON", "filename=" + place});
    EXPECT_EQ(absolute.err.find("looked for"), std::string::npos) << absolute.err;
}

TEST_F(Load, AMissingFileThatLiesBesideItsSceneIsFoundThere) {
    std::filesystem::create_directory(folder / "show");
    write("show/clubs.json", "[]");
    write("show/scene.json", R"({"instances": [{"name": "a", "parameters": {
        "Magic": 9473, "queryMode": 3, "filename": "clubs.json"}}]})");
    const ChildResult result = run({"load", "--scene", "show/scene.json"});
    const auto beside = (std::filesystem::path("show") / "clubs.json").string();
    EXPECT_NE(result.err.find(" The folder of the scene has it: " + beside + ".\n"),
              std::string::npos)
        << result.err;
}

TEST_F(Load, MalformedJsonIsAFailureThatSaysWhere) {
    write("broken.json", "{\"a\": [1,\n 2");
    const ChildResult result = load({"queryMode=JSON", "filename=broken.json"}, {"--out", "json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "{\n  \"READER_NUM_RECORDS\": 0\n}\n");
    EXPECT_NE(result.err.find("Error parsing JSON: "), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("line 2"), std::string::npos) << result.err;
}

TEST_F(Load, AFailureStillRunsThePostUpdateAction) {
    const ChildResult result =
        load({"queryMode=JSON", "filename=absent.json", "postAction=Empty=READER_NUM_RECORDS==0"},
             {"--out", "json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "{\n  \"READER_NUM_RECORDS\": 0,\n  \"Empty\": 1\n}\n");
}

TEST_F(Load, AScriptThatTheStoreCannotExecuteEndsWithFour) {
    write("odd.json", R"({"a": {"x": "1\"\";]"}})");
    const ChildResult result =
        load({"queryMode=JSON", "filename=odd.json", "xpath=a", "mode=1"}, {"--out", "json"});
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.out, "{}\n");
    EXPECT_TRUE(
        result.err.starts_with("The data store could not execute the script: line 1, column "))
        << result.err;
}

TEST_F(Load, TextsComeInTheHostsFontEncoding) {
    write("club.xml", "<c><name>Bayern M\xC3\xBCnchen</name></c>");
    const auto loaded = [&](const std::string& fontEncoding) {
        return load({"queryMode=XML", "filename=club.xml", "xpath=/c", "mode=3", "table=T"},
                    {"--font-encoding", fontEncoding, "--out", "script"});
    };
    EXPECT_EQ(loaded("0").out, "T[0-0]=\"\"Bayern M\xFCnchen\"\"; READER_NUM_RECORDS=1;");
    EXPECT_EQ(loaded("1").out, "T[0-0]=\"\"Bayern M\xC3\xBCnchen\"\"; READER_NUM_RECORDS=1;");
}

TEST_F(Load, AStoredInstanceIsLoadedAndSettingsComeAfterIt) {
    writeScene(R"("mode": "DataTable", "xpath": "table", "key": "club")");
    const ChildResult result = run({"load", "--scene", "scene.json", "--instance", "league",
                                    "--set", "numRows=1", "--out", "script"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "T[ARS]={{club=\"\"ARS\"\";name=\"\"Arsenal\"\";pts=7.5;},};");
}

TEST_F(Load, AParameterMayComeFromTheEnvironment) {
    const intake::EnvironmentVariable source("LEAGUE_FILE", "league.json");
    const ChildResult result = load({"queryMode=JSON", "xpath=table/club", "mode=3", "table=T"},
                                    {"--set-env", "filename=LEAGUE_FILE", "--out", "script"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "T[0-1]=\"\"ARS\"\",\"\"MCI\"\"; READER_NUM_RECORDS=2;");
}

TEST_F(Load, TheLastOfTwoSettingsHoldsWhicheverWayTheyCome) {
    const intake::EnvironmentVariable name("NAME", "E");
    const auto loaded = [&](const std::vector<std::string>& order) {
        return loadTable({"mode=3", "xpath=table/club", "numRows=1"}, order).out;
    };
    const std::string first = loaded({"--set-env", "table=NAME", "--set", "table=S"});
    const std::string last = loaded({"--set", "table=S", "--set-env", "table=NAME"});
    EXPECT_TRUE(first.starts_with("S (1 element)\n")) << first;
    EXPECT_TRUE(last.starts_with("E (1 element)\n")) << last;
}

TEST_F(Load, ATableInAPipeIsNotCut) {
    const intake::EnvironmentVariable none("COLUMNS", std::nullopt);
    const std::string name(100, 'n');
    std::string rows;
    for (int i = 0; i < 50; ++i)
        rows += "{\"" + name + "\": \"" + name + "\", \"b\": 1},";
    write("wide.json", "[" + rows + "{}]");
    const ChildResult result =
        load({"queryMode=JSON", "filename=wide.json", "xpath=*", "mode=1", "table=T"});
    EXPECT_EQ(result.out.find("more"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("\n   49  " + name + "  1\n"), std::string::npos) << result.out;
}

TEST_F(Load, ATableIsAsWideAsColumnsSays) {
    const intake::EnvironmentVariable columns("COLUMNS", "16");
    const ChildResult result = loadTable({"mode=DataArray"});
    EXPECT_TRUE(
        result.out.starts_with("T (2 records)\n"
                               "index  club\n"
                               "-----  ----\n"
                               "    0  ARS\n"
                               "    1  MCI\n"
                               "(2 more columns; load --out json shows everything)\n"))
        << result.out;
}

TEST_F(Load, ColumnsThatIsNoWidthIsAsIfItWereNotSet) {
    const intake::EnvironmentVariable none("COLUMNS", std::nullopt);
    const std::string out = loadTable({"mode=DataArray"}).out;
    for (const char* value : {"0", "-1", "80x", "wide"}) {
        const intake::EnvironmentVariable columns("COLUMNS", value);
        EXPECT_EQ(loadTable({"mode=DataArray"}).out, out) << value;
    }
}
