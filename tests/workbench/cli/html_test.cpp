// HTML tables from end to end: the workbench, the plugin and a page.

#include "tests/workbench/cli/Workbench.h"

namespace {

struct LoadHtml : Workbench {
    LoadHtml() {
        write(
            "page.html",
            "<!DOCTYPE html><h2>Closing prices 2024</h2>"
            "<section><h2>Closing prices</h2><table class='grid wide'>"
            "<tr><th>Symbol<th>Price<tr><td>KLDBY<td>310.25<tr><td>GRW<td>18.40</table></section>");
    }

    ChildResult loadTable(std::vector<std::string> settings) {
        settings.insert(settings.begin(), {"queryMode=4", "filename=page.html", "table=T",
                                           "key=Symbol", "fromRow=1", "varsPrefix=P_"});
        return load(settings, {"--out", "script"});
    }
};

}  // namespace

TEST_F(LoadHtml, EveryMode) {
    const std::string rows[] = {R"(={{Symbol=""KLDBY"";Price=""310.25"";};};)",
                                R"(={{Symbol=""GRW"";Price=""18.40"";};};)"};
    const std::string scripts[] = {
        "T[KLDBY]" + rows[0] + "T[GRW]" + rows[1],
        "T[0]" + rows[0] + "T[1]" + rows[1] + "READER_NUM_RECORDS=2;",
        "KLDBY={Symbol=\"\"KLDBY\"\";Price=\"\"310.25\"\";};\r\r\n"
        "GRW={Symbol=\"\"GRW\"\";Price=\"\"18.40\"\";};\r\r\n",
        R"(T[0-1]=""KLDBY"",""GRW""; READER_NUM_RECORDS=2;)",
    };
    for (int mode = 0; mode < 4; ++mode) {
        const ChildResult result =
            loadTable({"sheet=TEXT Closing prices", "mode=" + std::to_string(mode)});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, scripts[mode]);
        EXPECT_EQ(result.err, "");
    }
    const ChildResult shared = loadTable({"mode=4", "shmvar=V", "delimiter= - "});
    EXPECT_EQ(shared.status, 0);
    EXPECT_EQ(shared.out, "KLDBY - GRW");
}

TEST_F(LoadHtml, ATableThatIsNotThereFailsTheLoad) {
    const ChildResult result = loadTable({"sheet=CLASS grid"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "P_READER_NUM_RECORDS=0;");
    EXPECT_EQ(result.err, "HTML: Could not find any TABLE under CLASS \"grid\"\n");
}

TEST_F(LoadHtml, ABarInASelectorStandsBehindABackslash) {
    write("page.html", "<p>Men|Women</p><table><tr><td>Symbol<tr><td>KLDBY</table>");
    EXPECT_EQ(loadTable({"sheet=TEXT Men\\|Women"}).out, R"(T[KLDBY]={{Symbol=""KLDBY"";};};)");
    EXPECT_EQ(loadTable({"sheet=TEXT Men|Women"}).err,
              "HTML: Could not find any TABLE close to text \"Men\"\n");
}

TEST_F(LoadHtml, APageThatIsNotThereFailsTheLoad) {
    const ChildResult result = loadTable({"filename=missing.html"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "missing.html was looked for as " +
                              (std::filesystem::canonical(folder) / "missing.html").string() +
                              ".\nHTML: Failed to open URL \"missing.html\"\n");
}
