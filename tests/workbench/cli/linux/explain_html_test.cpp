// What `explain` says of HTML pages.

#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

constexpr const char* page = R"(<!DOCTYPE html><title>Harbour swim</title>
<h2>Heats</h2>
<div class="wide box"><table id="heats">
<tr><th>Lane</th><th>Swimmer</th></tr>
<tr><td>1</td><td>Ada</td></tr><tr><td>2</td><td>Bo</td></tr></table></div>
<h2>Final</h2>
<div id="final"><table class="results">
<tr><th>Rank</th><th>Swimmer</th><th>Time</th></tr>
<tr><td>1</td><td>Bo</td><td>58.1</td></tr></table></div>)";

class ExplainedPage : public ExplainTest {
protected:
    void expectOf(const std::string& content, const Settings& settings,
                  const std::string& text) const {
        write("page.html", content);
        expectExplained(
            joined({"queryMode=4", "filename=page.html", "table=Team", "mode=DataArray"}, settings),
            text);
    }
};

}  // namespace

TEST_F(ExplainedPage, ThatLoadsHasATickAtEachStage) {
    expectOf(page, {"sheet=ID heats", "fromRow=1", "mode=DataTable", "key=Lane"}, R"(
page.html: 2 records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   378 bytes
  ✓ format    an HTML page titled "Harbour swim"
  ✓ selection ID heats: 3 rows, 2 columns
  ✓ key       Lane
  ✓ rows      2 of 3: numbers 1 to 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedPage, SettingsAreReadAsTheyArriveAtThePlugin) {
    expectOf("<!DOCTYPE html><table id='a|b'><tr><td>1<tr><td>2</table>",
             {"sheet=ID a\\|b", "fromRow=1|x"}, R"(
page.html: 1 record, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   57 bytes
  ✓ format    an HTML page
  ✓ selection ID a|b: 2 rows, 1 column
  ✓ key       none is needed
  ✓ rows      1 of 2: number 1
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedPage, AnIdThatIsNotThereIsToldWithThoseThatAre) {
    expectOf(page, {"sheet=ID heat"}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   378 bytes
  ✓ format    an HTML page titled "Harbour swim"
  ✗ selection ID heat
              Nothing on the page has the id "heat". Of tables and what they stand in there are: heats, final.
              Set "Table/Sheet" (sheet) to one of these, or leave it empty for the first table.
  – key, rows, script, store: not reached
  Try: --set 'sheet=ID heats'   (3 records, checked)
)");
}

TEST_F(ExplainedPage, AClassThatIsNotThereIsToldWithThoseThatAre) {
    expectOf(page, {"sheet=CLASS box"}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   378 bytes
  ✓ format    an HTML page titled "Harbour swim"
  ✗ selection CLASS box
              Nothing on the page has the class "box". Of tables and what they stand in there are: wide box, results.
              Set "Table/Sheet" (sheet) to one of these, or leave it empty for the first table.
  – key, rows, script, store: not reached
  Try: --set 'sheet=CLASS wide box'   (3 records, checked)
)");
}

TEST_F(ExplainedPage, ATextThatIsNotThereIsToldWithHeadings) {
    expectOf(page, {"sheet=TEXT Finals"}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   378 bytes
  ✓ format    an HTML page titled "Harbour swim"
  ✗ selection TEXT Finals
              Nothing on the page has the text "Finals". The whole text must be the same. Headings that are there: Heats, Lane, Swimmer, Final, Rank, Time.
              Set "Table/Sheet" (sheet) to one of these, or leave it empty for the first table.
  – key, rows, script, store: not reached
  Try: --set 'sheet=CLASS results'   (2 records, checked)
)");
}

TEST_F(ExplainedPage, ATextThatLeadsToANeighbouringTableIsNotProposed) {
    expectOf(
        "<!DOCTYPE html><h2>Heats</h2><table><tr><td>1</table>"
        "<h2>Final</h2><table class=c><tr><td>1<tr><td>2</table>",
        {"sheet=TEXT Finals"}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   108 bytes
  ✓ format    an HTML page
  ✗ selection TEXT Finals
              Nothing on the page has the text "Finals". The whole text must be the same. Headings that are there: Heats, Final.
              Set "Table/Sheet" (sheet) to one of these, or leave it empty for the first table.
  – key, rows, script, store: not reached
  Try: --set 'sheet=CLASS c'   (2 records, checked)
)");
}

TEST_F(ExplainedPage, AnIdOfWhatHoldsNoTableIsTold) {
    expectOf("<div id=a>text</div><table id=b><tr><td>1</table>", {"sheet=ID a"}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   49 bytes
  ✓ format    an HTML page
  ✗ selection ID a
              What has the id "a" holds no table. Of tables and what they stand in there are: b.
              Set "Table/Sheet" (sheet) to one of these, or leave it empty for the first table.
  – key, rows, script, store: not reached
  Try: --set 'sheet=ID b'   (1 record, checked)
)");
}

TEST_F(ExplainedPage, ASelectorWithoutAKindIsTold) {
    expectOf(page, {"sheet=heats"}, R"(
page.html: 3 records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   378 bytes
  ✓ format    an HTML page titled "Harbour swim"
  ✗ selection heats
              The first word of "Table/Sheet" (sheet) says how the table is looked for: ID, CLASS or TEXT. What is looked for stands behind it, and nothing does.
              Set "Table/Sheet" (sheet) to one of these, or leave it empty for the first table.
  – key, rows, script, store: not reached
  Try: --set 'sheet=ID heats'   (3 records, checked)
)");
}

TEST_F(ExplainedPage, ASelectorInSmallLettersIsTold) {
    expectOf(page, {"sheet=id heats"}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   378 bytes
  ✓ format    an HTML page titled "Harbour swim"
  ✗ selection id heats
              The first word of "Table/Sheet" (sheet) says how the table is looked for: ID, CLASS or TEXT, in capitals. Nothing on the page has the text "heats". The whole text must be the same. Headings that are there: Heats, Lane, Swimmer, Final, Rank, Time.
              Set "Table/Sheet" (sheet) to one of these, or leave it empty for the first table.
  – key, rows, script, store: not reached
  Try: --set 'sheet=ID heats'   (3 records, checked)
)");
}

TEST_F(ExplainedPage, AKeyThatIsNotThereIsToldWithThoseThatAre) {
    expectOf(page, {"sheet=ID heats", "mode=DataTable", "key=Swimer"}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   378 bytes
  ✓ format    an HTML page titled "Harbour swim"
  ✓ selection ID heats: 3 rows, 2 columns
  ✗ key       Swimer
              The first row of the table has no cell "Swimer". It has: Lane, Swimmer.
              Set "Key" (key) to one of these.
  – rows, script, store: not reached
  Try: --set key=Swimmer   (3 records, checked)
)");
}

TEST_F(ExplainedPage, AKeyThatRepeatsOverwrites) {
    expectOf("<table><tr><td>a<td>b<tr><td>1<td>x<tr><td>1<td>y</table>",
             {"mode=DataTable", "key=a"}, R"(
page.html: 2 records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   57 bytes
  ✓ format    an HTML page
  ✓ selection the first table: 3 rows, 2 columns
  ! key       a
              The keys are not unique: 1 record of 3 takes the place of an earlier one with the same key: 1. 2 records are left.
              Set "Key" (key) to a column that differs from record to record, or "Field is a: " (mode) to DataArray.
  ✓ rows      all 3
  ✓ script
  ✓ store
  Try: --set key=b   (3 records, checked)
)");
}

TEST_F(ExplainedPage, ARowWithoutTheCellOfTheKeyHasAnEmptyOne) {
    expectOf("<!DOCTYPE html><table><tr><th>a<th>k<tr><td>1<td>x<tr><td>2</table>",
             {"mode=DataTable", "key=k", "fromRow=1"}, R"(
page.html: 2 records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   67 bytes
  ✓ format    an HTML page
  ✓ selection the first table: 3 rows, 2 columns
  ! key       k
              The key of 1 record is empty.
  ✓ rows      2 of 3: numbers 1 to 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedPage, AHeaderWithoutATextIsAWarning) {
    expectOf("<table><tr><th><th>Club<tr><td>1<td>Quay</table>", {"fromRow=1"}, R"(
page.html: 1 record, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   48 bytes
  ✓ format    an HTML page
  ✓ selection the first table: 2 rows, 2 columns
  ✓ key       none is needed
  ✓ rows      1 of 2: number 1
  ! script    names and values are copied as they are
              A field has no name, which a script needs.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✓ store
)");
}

TEST_F(ExplainedPage, NamesThatBreakTheScriptAreAWarning) {
    expectOf("<table><tr><th>sum=3<th>a{b<tr><td>1<td>Quay</table>", {"fromRow=1"}, R"(
page.html: 1 record, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   52 bytes
  ✓ format    an HTML page
  ✓ selection the first table: 2 rows, 2 columns
  ✓ key       none is needed
  ✓ rows      1 of 2: number 1
  ! script    names and values are copied as they are
              The name "sum=3" cannot stand in a script as it is.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✓ store
)");
}

TEST_F(ExplainedPage, WithoutATableIsTold) {
    expectOf("<!DOCTYPE html><title>Sign in</title><form><input name=user></form>", {}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   67 bytes
  ✓ format    an HTML page titled "Sign in"
  ✗ selection the first table
              The page has no table.
              Look at the page in a browser: it may be another one than is wanted, or its tables may be made by a script, which is not run.
  – key, rows, script, store: not reached
)");
}

TEST_F(ExplainedPage, ATableWithoutRowsIsTold) {
    expectOf("<!DOCTYPE html><title>Soon</title><table id=heats></table>", {}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   58 bytes
  ✓ format    an HTML page titled "Soon"
  ✓ selection the first table: the table is there and has no rows
  ✓ store
  – key, rows, script: not looked at
)");
}

TEST_F(ExplainedPage, AFirstRowBehindTheEndIsTold) {
    expectOf(page, {"fromRow=3"}, R"(
page.html: no records, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   378 bytes
  ✓ format    an HTML page titled "Harbour swim"
  ✓ selection the first table: 3 rows, 2 columns
  ✓ key       none is needed
  ✗ rows      from 3
              There are 3 rows, 0 to 2.
              Set "From row" (fromRow) to the first one that is wanted.
  – script, store: not reached
  Try: --set fromRow=   (3 records, checked)
)");
}

TEST_F(ExplainedPage, AFileUrlIsRead) {
    expectOf(page,
             {"filename=file://" + std::filesystem::canonical(folder).string() + "/page.html"},
             R"(
file://FOLDER/page.html: 3 records, # s
  ✓ settings
  ✓ address   file://FOLDER/page.html
  ✓ fetched   378 bytes
  ✓ format    an HTML page titled "Harbour swim"
  ✓ selection the first table: 3 rows, 2 columns
  ✓ key       none is needed
  ✓ rows      all 3
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedPage, ATitleInAnotherEncodingIsDecoded) {
    expectOf(
        "<!DOCTYPE html><meta charset=iso-8859-1><title>K\xF6ge</title><table><tr><td>1</table>",
        {}, R"(
page.html: 1 record, # s
  ✓ settings
  ✓ address   page.html
  ✓ fetched   83 bytes
  ✓ format    an HTML page titled "Köge"
  ✓ selection the first table: 1 row, 1 column
  ✓ key       none is needed
  ✓ rows      all 1
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedPage, AColumnThatComesTwiceIsAWarning) {
    write("twice.html",
          "<!DOCTYPE html><table id='t'><tr><th>K<th>A<th>A<tr><td>1<td>2<td>3</table>");
    const Explained explained(explain({"queryMode=4", "filename=twice.html", "table=T",
                                       "mode=DataArray", "sheet=ID t", "fromRow=1"},
                                      {"--out", "json"})
                                  .out);
    EXPECT_TRUE(explained.isOk);
    EXPECT_EQ(explained.stages[7].cause,
              "The name \"A\" comes twice in a record; the last value counts.");
}
