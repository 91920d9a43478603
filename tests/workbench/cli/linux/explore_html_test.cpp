// What `explore` lists of HTML pages.

#include "tests/workbench/cli/linux/ExploreTest.h"

namespace {

constexpr const char* page = R"(<!DOCTYPE html><title>Harbour swim</title>
<h2>Heats</h2><table><tr><th>Lane<th>Swimmer<tr><td>1<td>Ada<tr><td>2<td>Bo</table>
<div id="final"><table><tr><th>Rank<th><th>Rank<tr><td>1<td>Bo<td>x</table></div>
<p><table><tr><td>more</table>)";

class ExploredPage : public ExploreTest {};

}  // namespace

TEST_F(ExploredPage, PagesAreListedByTheirTables) {
    write("swim.html", page);
    expectExplored({"swim.html"}, R"(
swim.html is an HTML page titled "Harbour swim", 239 bytes
records  name             kind                              first value     select it by
      2  the first table  table "Heats", 3 rows, 2 columns  Lane | Swimmer  --set sheet= --set fromRow=1
      1  ID final         table, 2 rows, 3 columns          Rank |  | Rank  --set 'sheet=ID final' --set fromRow=1
      1  a table          table, 1 row, 1 column            more

Load one, for example: intake-workbench load swim.html --set mode=DataArray --set sheet= --set fromRow=1
)");
}

TEST_F(ExploredPage, ATableOfAPageIsListedByItsColumns) {
    write("swim.html", page);
    expectExplored({"swim.html", "--at", "ID final"}, R"(
swim.html is an HTML page titled "Harbour swim", 239 bytes
records  name  kind    first value  select it by
      1  Rank  column  1            --set 'sheet=ID final' --set fromRow=1 --set key=Rank --set 'mode=Data Field Array'
      1        column  Bo
      1  Rank  column  x
)");
}

TEST_F(ExploredPage, APageHasNoTableAtAPlaceThatIsNotThere) {
    write("swim.html", page);
    expectExplored({"swim.html", "--at", "ID semifinal"}, R"(
swim.html has no table at "ID semifinal".
)",
                   1);
}

TEST_F(ExploredPage, ATableIsNotSelectedByWhatDoesNotArrive) {
    write("swim.html",
          "<!DOCTYPE html><title>Swim</title><table><tr><td>1</table><table "
          "id='a|b'><tr><td>2</table>"
          "<table id='a\\b' class=c><tr><td>3</table>");
    expectExplored({"swim.html"}, R"(
swim.html is an HTML page titled "Swim", 132 bytes
records  name             kind                    first value  select it by
      1  the first table  table, 1 row, 1 column  1            --set sheet=
      1  a table          table, 1 row, 1 column  2
      1  CLASS c          table, 1 row, 1 column  3            --set 'sheet=CLASS c'
)");
    expectExplored({"swim.html", "--at", "ID a|b"}, R"(
swim.html is an HTML page titled "Swim", 132 bytes
records  name  kind    first value  select it by
      1  2     column
)");
}

TEST_F(ExploredPage, APageWithoutTablesIsSaid) {
    write("signin.html", "<!DOCTYPE html><title>Sign in</title><form></form>");
    expectExplored({"signin.html"}, R"(
signin.html is an HTML page titled "Sign in", 50 bytes.
Nothing in it can be selected.
)");
}

TEST_F(ExploredPage, PagesAreSearchedAndLimited) {
    write("swim.html", page);
    expectExplored({"swim.html", "--find", "bo"}, R"(
swim.html is an HTML page titled "Harbour swim", 239 bytes
records  name             kind                              first value     select it by
      2  the first table  table "Heats", 3 rows, 2 columns  Lane | Swimmer  --set sheet= --set fromRow=1
      1  ID final         table, 2 rows, 3 columns          Rank |  | Rank  --set 'sheet=ID final' --set fromRow=1

Load one, for example: intake-workbench load swim.html --set mode=DataArray --set sheet= --set fromRow=1
)");
    expectExplored({"swim.html", "--limit", "1"}, R"(
swim.html is an HTML page titled "Harbour swim", 239 bytes
records  name             kind                              first value     select it by
      2  the first table  table "Heats", 3 rows, 2 columns  Lane | Swimmer  --set sheet= --set fromRow=1
(2 more; --limit lists more, --from goes on, --at goes down, --find searches)

Load one, for example: intake-workbench load swim.html --set mode=DataArray --set sheet= --set fromRow=1
)");
}

TEST_F(ExploredPage, ATableIsListedPageByPage) {
    write("swim.html", page);
    EXPECT_EQ(pageOf({"swim.html", "--at", "ID final", "--limit", "1"}), "Rank of 3");
    EXPECT_EQ(pageOf({"swim.html", "--at", "ID final", "--limit", "1", "--from", "1"}), " of 3");
}

TEST_F(ExploredPage, ASearchEndsWhenItsPageIsFullAndThereIsMore) {
    write("swim.html", page);
    EXPECT_EQ(pageOf({"swim.html", "--find", "o", "--limit", "1"}), "the first table of more");
    EXPECT_EQ(pageOf({"swim.html", "--find", "o", "--limit", "1", "--from", "1"}),
              "ID final of more");
    EXPECT_EQ(pageOf({"swim.html", "--find", "o", "--limit", "1", "--from", "2"}), "a table of 3");
    expectExplored({"swim.html", "--find", "o", "--limit", "1"}, R"(
swim.html is an HTML page titled "Harbour swim", 239 bytes
records  name             kind                              first value     select it by
      2  the first table  table "Heats", 3 rows, 2 columns  Lane | Swimmer  --set sheet= --set fromRow=1
(more; --limit lists more, --from goes on, --at goes down, --find searches)

Load one, for example: intake-workbench load swim.html --set mode=DataArray --set sheet= --set fromRow=1
)");
}

TEST_F(ExploredPage, TheJsonFormHasTheHeadingsWithTheTablesBelowThem) {
    write("meet.html",
          "<!DOCTYPE html><title>Meet</title><h1>Harbour meet</h1><h2>Heats</h2>"
          "<table id=heats><tr><td>1<td><table id=splits><tr><td>2</table></table>"
          "<h2>Final</h2><table id=final><tr><td>3</table><h1>Clubs</h1><table "
          "id=clubs><tr><td>4</table>");
    EXPECT_EQ(outlineOf({"meet.html"}), R"(
heading Harbour meet
.heading Heats
..table ID heats
...table ID splits
.heading Final
..table ID final
heading Clubs
.table ID clubs)");
    EXPECT_EQ(outlineOf({"meet.html", "--find", "F"}), "\nheading Final");
}

TEST_F(ExploredPage, ATableComesWithAllThatSelectsItTheMostTellingFirst) {
    write("meet.html",
          "<!DOCTYPE html><title>Meet</title><div id=left class=box><h2>Heats</h2>"
          "<table class=results><tr><th>Lane<tr><td>1</table></div><div class=box><h2>Final</h2>"
          "<table class=results><tr><th>Lane<tr><td>3</table></div>");
    const rapidjson::Document json = explored({"meet.html"});
    std::string selectors;
    for (const auto& entry : json["entries"].GetArray()) {
        if (entry["type"] != "table") continue;
        selectors += std::string("\n") + entry["set"]["sheet"].GetString() + ":";
        for (const auto& each : entry["selectors"].GetArray())
            selectors += std::string(" '") + each.GetString() + "'";
    }
    EXPECT_EQ(selectors, R"(
ID left: 'ID left' 'CLASS results' 'CLASS box' '' 'TEXT Heats' 'TEXT Lane'
TEXT Final: 'TEXT Final')");
}

TEST_F(ExploredPage, ATableIsPreviewedWithTheColumnsOfItsPage) {
    write("swim.html", page);
    EXPECT_EQ(previewOf({"swim.html"}), "none");
    EXPECT_EQ(previewOf({"swim.html", "--at", "#1"}), R"(
Lane|Swimmer
1|Ada
2|Bo
0)");
    EXPECT_EQ(previewOf({"swim.html", "--at", "ID final", "--from", "1", "--limit", "2"}), R"(
|Rank
Bo|x
0)");
}

TEST_F(ExploredPage, ATableThatNothingSelectsIsLookedIntoByItsNumber) {
    write("swim.html", page);
    expectExplored({"swim.html", "--at", "#3"}, R"(
swim.html is an HTML page titled "Harbour swim", 239 bytes
records  name  kind    first value  select it by
      1  more  column
)");
    expectExplored({"swim.html", "--at", "#4"}, R"(
swim.html has no table at "#4".
)",
                   1);
}

TEST_F(ExploredPage, ALongTableIsPreviewedByItsStart) {
    std::string rows;
    for (int row = 0; row < 150; ++row)
        rows += "<tr><td>" + std::string(row == 0 ? 0 : 250, 'x');
    write("long.html", "<!DOCTYPE html><title>Long</title><table id=t>" + rows + "</table>");
    const rapidjson::Document json = explored({"long.html", "--at", "ID t"});
    const rapidjson::Value& preview = json["preview"];
    EXPECT_EQ(preview["rows"].Size(), 100U);
    EXPECT_EQ(preview["rows"][0][0], (std::string(200, 'x') + "…").c_str());
    EXPECT_EQ(preview["leftOut"].GetUint(), 49U);
}
