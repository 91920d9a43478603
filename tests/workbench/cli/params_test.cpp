// `params`: what the plugin registers, as a table and as JSON.

#include <nlohmann/json.hpp>

#include "tests/workbench/cli/Workbench.h"

namespace {

struct Params : Workbench {};

}  // namespace

TEST_F(Params, AsATableOneRowForEachParameter) {
    const ChildResult result = run({"params", "--plugin", PROBE_PLUGIN});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "number  name    label    type         default    limits\n"
              "------  ------  -------  -----------  ---------  ------------------\n"
              "     1  count   Count    int, hidden  3          1 to 9\n"
              "     2  title   Title    string       none       at most 7 bytes\n"
              "     3  flag    Flag     bool         1          0 or 1\n"
              "     4  ratio   Ratio    float        0.5        0 to 2\n"
              "     5  where   Where    container               at most 4095 bytes\n"
              "     6  choice  Choice:  radio        1          0 One, 1 Two\n"
              "     7  notes            text         two lines  at most 4095 bytes\n"
              "     8                   user data               8 bytes\n"
              "     9  go      Go       button                  action 7\n"
              "    10  last    Last     int          -1         -5 to 5\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(Params, AsJsonWithLabelsAndEntriesAsRegistered) {
    const ChildResult result = run({"params", "--out", "json"});
    EXPECT_EQ(result.status, 0);
    const auto json = nlohmann::json::parse(result.out);
    ASSERT_EQ(json.size(), 47U);
    EXPECT_EQ(json[10], nlohmann::json::parse(R"({"number": 11, "name": "queryMode",
        "label": "Query type: ", "type": "radio", "default": 0,
        "entries": [" EXCEL ", " SQL ", " XML ", " JSON "],
        "hidden": false, "persistent": true})"));
    EXPECT_EQ(json[38], nlohmann::json::parse(R"({"number": 39, "name": "autoLoadInterval",
        "label": "Automatic load period (in seconds) ", "type": "float", "default": 10,
        "minimum": 0, "maximum": 6000, "hidden": false, "persistent": true})"));
    EXPECT_EQ(json[39], nlohmann::json::parse(R"({"number": 40, "name": "load", "label": "Load",
        "type": "button", "action": 0, "hidden": false, "persistent": true})"));
    EXPECT_EQ(json[0], nlohmann::json::parse(R"({"number": 1, "name": "Magic", "label": "Magic",
        "type": "int", "default": 9473, "minimum": 9473, "maximum": 9473,
        "hidden": true, "persistent": true})"));
}
