// What `explain` says of a source of another kind than the query type: every kind by every type.

#include "tests/formats/workbook/TestBook.h"
#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

struct Kind {
    const char* file;
    std::string content;
    const char* words;
    const char* type;    // the value of queryMode that reads it
    Settings selecting;  // its records
};

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all{
        {"a.json", R"({"rows": [{"id": 1}, {"id": 2}]})", "JSON", "JSON", {"xpath=rows"}},
        {"a.xml", "<l><c><id>1</id></c><c><id>2</id></c></l>", "XML", "XML", {"xpath=/l/c"}},
        {"a.html", "<!DOCTYPE html><table><tr><td>id<tr><td>1</table>", "an HTML page", "4", {}},
        {"a.xlsx",
         intake::TestBook()
             .sheet("S",
                    "<row><c t='inlineStr'><is><t>id</t></is></c></row>"
                    "<row><c><v>1</v></c></row><row><c><v>2</v></c></row>")
             .bytes(),
         "a workbook",
         "EXCEL",
         {"sheet=S"}}};
    return all;
}

using ExplainedKind = ExplainTest;

}  // namespace

TEST_F(ExplainedKind, IsNamedByEveryOtherQueryTypeWithTheOneThatReadsIt) {
    for (const Kind& kind : kinds()) {
        write(kind.file, kind.content);
        for (const Kind& other : kinds()) {
            const std::string type = other.type;
            const Settings settings = joined(
                {"queryMode=" + type, std::string("filename=") + kind.file, "table=T", "key=id"},
                kind.selecting);
            const Explained explained(explain(settings, {"--out", "json"}).out);
            SCOPED_TRACE(std::string(kind.file) + " by " + type);
            EXPECT_EQ(explained.isOk, type == kind.type);
            if (explained.isOk) continue;
            ASSERT_NE(explained.failed(), nullptr);
            EXPECT_EQ(explained.failed()->name, "format");
            EXPECT_TRUE(type == "EXCEL" || explained.failed()->seen == kind.words);
            EXPECT_EQ(explained.failed()->set, Settings{std::string("queryMode=") + kind.type});
            EXPECT_EQ(explained.failed()->records, 2U);
        }
    }
}

TEST_F(ExplainedKind, IsNamedWhereADatabaseIsMeantAndHasNoConnection) {
    for (const Kind& kind : kinds()) {
        write(kind.file, kind.content);
        const Settings settings =
            joined({"queryMode=SQL", std::string("filename=") + kind.file, "table=T", "key=id"},
                   kind.selecting);
        const Explained explained(explain(settings, {"--out", "json"}).out);
        ASSERT_NE(explained.failed(), nullptr) << kind.file;
        EXPECT_EQ(explained.failed()->name, "settings");
        EXPECT_EQ(explained.failed()->set, Settings{std::string("queryMode=") + kind.type});
    }
}
