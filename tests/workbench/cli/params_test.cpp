// `params`: what the plugin registers, as a table and as JSON.

#include "tests/formats/json/parse.h"
#include "tests/workbench/cli/Workbench.h"

namespace {

struct Params : Workbench {};

std::vector<std::string> elements(const intake::JsonDocument& array) {
    using Document = intake::JsonDocument;
    std::vector<std::string> texts;
    for (Document::Node each = Document::firstChild(Document::ROOT);
         each != array.behind(Document::ROOT); each = array.behind(each))
        texts.push_back(outline(array, each));
    return texts;
}

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
    const std::vector<std::string> parameters = elements(intake::parse(result.out));
    ASSERT_EQ(parameters.size(), 47U);
    EXPECT_EQ(
        parameters[10],
        R"({number: 11, name: "queryMode", label: "Query type: ", type: "radio", default: 0, )"
        R"(entries: [" EXCEL ", " SQL ", " XML ", " JSON "], )"
        R"(hidden: false, persistent: true})");
    EXPECT_EQ(parameters[38],
              R"({number: 39, name: "autoLoadInterval", )"
              R"(label: "Automatic load period (in seconds) ", type: "float", default: 10, )"
              R"(minimum: 0, maximum: 6000, hidden: false, persistent: true})");
    EXPECT_EQ(parameters[39],
              R"({number: 40, name: "load", label: "Load", type: "button", action: 0, )"
              R"(hidden: false, persistent: true})");
    EXPECT_EQ(parameters[0],
              R"({number: 1, name: "Magic", label: "Magic", type: "int", default: 9473, )"
              R"(minimum: 9473, maximum: 9473, hidden: true, persistent: true})");
}
