// The command line itself: what is refused, and how it is said.

#include <sstream>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/workbench/cli/Workbench.h"

namespace {

struct Usage : Workbench {
    // Runs what must be refused, and returns the message.
    std::string refusal(const std::vector<std::string>& arguments) {
        const ChildResult result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        return result.err;
    }
};

}  // namespace

TEST_F(Usage, HelpIsAResult) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--help"}, {"load", "--help"}, {"run", "--help"}}) {
        const ChildResult result = run(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_NE(result.out.find("Usage: intake-workbench"), std::string::npos) << result.out;
    }
}

TEST_F(Usage, HelpFitsATerminalOfEightyColumns) {
    for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
             {}, {"load"}, {"explain"}, {"explore"}, {"params"}, {"run"}, {"serve"}}) {
        std::vector<std::string> arguments = command;
        arguments.emplace_back("--help");
        const ChildResult result = run(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_NE(result.out, "");
        std::istringstream lines(result.out);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(line.size(), 80U) << line;
        }
    }
}

TEST_F(Usage, TheVersionIsAResultAndThatOfThePlugin) {
    const ChildResult result = run({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "intake-workbench 1.0.1\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(Usage, ACommandIsNeeded) {
    EXPECT_EQ(refusal({}),
              "intake-workbench: Give a command: load, explain, explore, params, run or serve.\n");
    EXPECT_EQ(refusal({"fetch"}),
              "intake-workbench: The following argument was not expected: fetch\n");
    EXPECT_EQ(refusal({"run"}), "intake-workbench: SCENE is required\n");
}

TEST_F(Usage, OptionsAndTheirValuesAreChecked) {
    EXPECT_EQ(refusal({"load", "--bogus"}),
              "intake-workbench: The following argument was not expected: --bogus\n");
    EXPECT_EQ(refusal({"load", "--out", "xml"}),
              "intake-workbench: --out: xml not in {table,script,json,trace}\n");
    EXPECT_EQ(refusal({"params", "--out", "script"}),
              "intake-workbench: --out: script not in {table,json}\n");
    EXPECT_EQ(refusal({"load", "--timeout", "-1"}),
              "intake-workbench: --timeout: it takes a number from 0 on, not \"-1\".\n");
    EXPECT_EQ(refusal({"load", "--instance", "a"}),
              "intake-workbench: --instance requires --scene\n");
    EXPECT_EQ(refusal({"run", "a.json", "--frames", "1", "--seconds", "1"}),
              "intake-workbench: --frames excludes --seconds\n");
}

TEST_F(Usage, AnUnknownParameterIsNamedWithTheNearestOne) {
    EXPECT_EQ(refusal({"load", "--set", "filenam=x"}),
              "intake-workbench: There is no parameter \"filenam\". Did you mean \"filename\"?\n");
}

TEST_F(Usage, AValueThatDoesNotFitIsNamedWithWhatWould) {
    EXPECT_EQ(refusal({"load", "--set", "queryMode=CSV"}),
              "intake-workbench: \"queryMode\" cannot be \"CSV\": it takes EXCEL, SQL, XML, JSON, "
              "HTML, or an index from 0 to 4.\n");
    EXPECT_EQ(refusal({"load", "--set", "autoLoadInterval=6001"}),
              "intake-workbench: \"autoLoadInterval\" cannot be \"6001\": it takes a number from 0 "
              "to 6000.\n");
    EXPECT_EQ(refusal({"load", "--set", "useAuth=maybe"}),
              "intake-workbench: \"useAuth\" cannot be \"maybe\": it takes 0, 1, true or false.\n");
    EXPECT_EQ(refusal({"load", "--set", "key=" + std::string(80, 'k')}),
              "intake-workbench: \"key\" takes at most 79 bytes; this text has 80.\n");
    EXPECT_EQ(refusal({"load", "--set", "load=1"}),
              "intake-workbench: \"load\" is a button; it has no value.\n");
    EXPECT_EQ(refusal({"load", "--set", "queryMode"}),
              "intake-workbench: --set takes NAME=VALUE, not \"queryMode\".\n");
}

TEST_F(Usage, AnEnvironmentVariableThatIsNotSetIsNamed) {
    const intake::EnvironmentVariable none("FEED_PASSWORD", std::nullopt);
    EXPECT_EQ(refusal({"load", "--set-env", "password=FEED_PASSWORD"}),
              "intake-workbench: --set-env password=FEED_PASSWORD: there is no environment "
              "variable \"FEED_PASSWORD\". Give its name, and export it.\n");
    EXPECT_EQ(refusal({"load", "--set-env", "password"}),
              "intake-workbench: --set-env takes NAME=VARIABLE, not \"password\".\n");
    EXPECT_EQ(refusal({"load", "--set-env", "password="}),
              "intake-workbench: --set-env takes NAME=VARIABLE, not \"password=\".\n");
}

TEST_F(Usage, ASceneThatCannotBeReadIsNamedWithItsPlace) {
    const std::string expected =
        "intake-workbench: absent.json: the scene file cannot be read. It was looked for as " +
        (std::filesystem::canonical(folder) / "absent.json").string() + ".\n";
    EXPECT_EQ(refusal({"run", "absent.json"}), expected);
    EXPECT_EQ(refusal({"load", "--scene", "absent.json"}), expected);
}

TEST_F(Usage, ABadValueInASceneNamesFileAndInstance) {
    write("scene.json", R"({"instances": [
        {"name": "league", "parameters": {"queryMode": "JSON", "mode": "Tables"}}]})");
    const std::string expected =
        "intake-workbench: scene.json, instance \"league\": \"mode\" cannot be \"Tables\": it "
        "takes "
        "DataTable, DataArray, DataStructure, Data Field Array, Shared Memory, or an index from 0 "
        "to 4.\n";
    EXPECT_EQ(refusal({"run", "scene.json", "--frames", "1"}), expected);
    EXPECT_EQ(refusal({"load", "--scene", "scene.json", "--instance", "league"}), expected);
}

TEST_F(Usage, APluginThatCannotBeLoadedIsNamed) {
    EXPECT_TRUE(refusal({"params", "--plugin", "Absent.so"})
                    .starts_with("intake-workbench: Could not load the plugin Absent.so: "));
}
