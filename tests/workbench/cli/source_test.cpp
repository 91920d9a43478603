// `load` with a bare source, whose kind is found by looking.

#include "tests/workbench/cli/Workbench.h"

namespace {

struct Source : Workbench {
    ChildResult loadSource(const std::string& source, const std::vector<std::string>& settings,
                           const std::vector<std::string>& more = {}) const {
        std::vector<std::string> all{source, "--out", "script"};
        all.insert(all.end(), more.begin(), more.end());
        return load(settings, all);
    }
};

}  // namespace

TEST_F(Source, AJsonFileIsLoadedAsJson) {
    write("clubs.json", R"(["ARS", "MCI"])");
    const ChildResult result = loadSource("clubs.json", {"xpath=*", "mode=3", "table=T"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "T[0-1]=\"\"ARS\"\",\"\"MCI\"\"; READER_NUM_RECORDS=2;");
    EXPECT_EQ(result.err, "clubs.json is JSON: --set queryMode=JSON\n");
}

TEST_F(Source, AnXmlFileIsLoadedAsXmlWhateverItsNameSays) {
    write("clubs.json", "<l><c>ARS</c><c>MCI</c></l>");
    const ChildResult result = loadSource("clubs.json", {"xpath=/l/c", "mode=3", "table=T"});
    EXPECT_EQ(result.out, "T[0-1]=\"\"ARS\"\",\"\"MCI\"\"; READER_NUM_RECORDS=2;");
    EXPECT_EQ(result.err, "clubs.json is XML: --set queryMode=XML\n");
}

TEST_F(Source, APageIsToldWithItsTitle) {
    write("a.json", "<html><title>Sign\nin</title><table><tr><td>a<tr><td>1</table>");
    const ChildResult result = loadSource("a.json", {"mode=1", "fromRow=1"});
    EXPECT_EQ(result.err, "a.json is an HTML page titled \"Sign in\": --set queryMode=4\n");
}

TEST_F(Source, ADatabaseNeedsAQuery) {
    write("fleet 1.db", std::string("SQLite format 3\0", 16));
    const ChildResult refused = loadSource("fleet 1.db", {});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err,
              "intake-workbench: fleet 1.db is an SQLite database; say what to read from it, with "
              "--set query=\"SELECT * FROM …\".\n");
    const ChildResult loaded = loadSource("fleet 1.db", {"query=SELECT 1"});
    EXPECT_TRUE(loaded.err.starts_with(
        "fleet 1.db is an SQLite database: --set queryMode=SQL --set 'connStr=Provider=SQLite;Data "
        "Source=\"fleet 1.db\"'\n"))
        << loaded.err;
}

TEST_F(Source, WhatTheUserSetsHolds) {
    write("clubs.json", R"(["ARS"])");
    const ChildResult result =
        loadSource("clubs.json", {"queryMode=XML", "xpath=*", "mode=3", "table=T"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.find("is JSON"), std::string::npos) << result.err;
}

TEST_F(Source, ItTakesThePlaceOfThatOfAScene) {
    write("clubs.xml", "<l><c>ARS</c></l>");
    write("scene.json", R"({"instances": [{"name": "a", "parameters": {
        "Magic": 9473, "queryMode": "JSON", "filename": "absent.json", "mode": 3,
        "xpath": "/l/c", "table": "T"}}]})");
    const ChildResult result = loadSource("clubs.xml", {}, {"--scene", "scene.json"});
    EXPECT_EQ(result.out, "T[0-0]=\"\"ARS\"\"; READER_NUM_RECORDS=1;");
}

TEST_F(Source, WhatCannotBeLoadedIsNamed) {
    const std::string others =
        "; what can be loaded is JSON, XML, HTML tables, worksheets and databases.\n";
    const std::vector<std::pair<std::string, std::string>> contents{
        {"", "empty"},
        {"%PDF-1.7", "a PDF document"},
        {"\x1F\x8B\x08", "compressed (gzip)"},
        {"club;points\n", "a text, and neither JSON nor XML nor HTML"}};
    for (const auto& [bytes, words] : contents) {
        write("source", bytes);
        const ChildResult result = loadSource("source", {});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "source is " + words + others);
    }
}

TEST_F(Source, AFileThatIsNotThereIsNamedWithItsPlace) {
    const ChildResult result = loadSource("absent.json", {});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "absent.json is not there; it was looked for as " +
                              (std::filesystem::canonical(folder) / "absent.json").string() +
                              ".\n");
    EXPECT_EQ(loadSource(".", {}).err, ". is a folder.\n");
}
