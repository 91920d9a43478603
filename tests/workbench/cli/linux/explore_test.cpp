// `explore`: what can be selected in a source, and by which settings.

#include "tests/formats/workbook/TestBook.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

constexpr const char* league = R"({"season": 2027, "table": [
  {"id": 7, "name": "Harbour", "last": ["W", "D"], "coach": {"name": "Ada"}},
  {"id": 9, "name": "Quay", "last": [], "coach": null, "a/b": 1}],
  "notes": []})";

constexpr const char* page = R"(<!DOCTYPE html><title>Harbour swim</title>
<h2>Heats</h2><table><tr><th>Lane<th>Swimmer<tr><td>1<td>Ada<tr><td>2<td>Bo</table>
<div id="final"><table><tr><th>Rank<th><th>Rank<tr><td>1<td>Bo<td>x</table></div>
<p><table><tr><td>more</table>)";

/// Two sheets, with a blank, a number and a switch.
std::string fixtureList() {
    return intake::TestBook()
        .sheet("Round 28",
               "<row><c t='inlineStr'><is><t>Home</t></is></c><c t='inlineStr'><is><t>Home "
               "odds</t></is></c><c t='inlineStr'><is><t>Live</t></is></c></row>"
               "<row><c t='inlineStr'><is><t>Holm</t></is></c><c><v>2.1</v></c></row>"
               "<row><c t='inlineStr'><is><t>Vik</t></is></c><c><v>1.8</v></c>"
               "<c t='b'><v>1</v></c></row>")
        .sheet("Teams", "<row><c t='inlineStr'><is><t>Team</t></is></c></row>")
        .bytes();
}

class Explored : public ExplainTest {
protected:
    /// Explores, and expects just this text, which begins behind a line end, and this exit status.
    void expectExplored(const std::vector<std::string>& arguments, const std::string& text,
                        int status = 0) const {
        const ChildResult result = explore(arguments);
        EXPECT_EQ("\n" + masked(result.out + result.err), text);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.out.empty(), status != 0);
    }

    ChildResult explore(const std::vector<std::string>& arguments) const {
        return run(joined({"explore"}, arguments));
    }
};

}  // namespace

TEST_F(Explored, JsonIsAnOutlineOfPaths) {
    write("league.json", league);
    expectExplored({"league.json"}, R"(
league.json is JSON, 187 bytes
records  name      kind            first value  select it by
      1  season    numbers         2027         --set xpath=season
      2  table     objects                      --set xpath=table
      2    id      numbers         7            --set xpath=table/id
      2    name    texts           Harbour      --set xpath=table/name
      2    last    texts           W            --set xpath=table/last
      2    coach   nulls, objects               --set xpath=table/coach
      1      name  texts           Ada          --set xpath=table/coach/name
      1    a/b     numbers         1
      0  notes     empty                        --set xpath=notes

Load one, for example: intake-workbench load league.json --set mode=DataArray --set xpath=table
)");
}

TEST_F(Explored, JsonIsListedBelowAPlace) {
    write("league.json", league);
    expectExplored({"league.json", "--at", "table/coach"}, R"(
league.json is JSON, 187 bytes
records  name  kind   first value  select it by
      1  name  texts  Ada          --set xpath=table/coach/name
)");
}

TEST_F(Explored, JsonIsSearchedByNamesAndValues) {
    write("league.json", league);
    expectExplored({"league.json", "--find", "ada"}, R"(
league.json is JSON, 187 bytes
records  name  kind   first value  select it by
      1  name  texts  Ada          --set xpath=table/coach/name
)");
}

TEST_F(Explored, JsonIsListedByWholeLevelsAsFarAsTheyFit) {
    write("league.json", league);
    expectExplored({"league.json", "--limit", "3"}, R"(
league.json is JSON, 187 bytes
records  name    kind     first value  select it by
      1  season  numbers  2027         --set xpath=season
      2  table   objects               --set xpath=table
      0  notes   empty                 --set xpath=notes

Load one, for example: intake-workbench load league.json --set mode=DataArray --set xpath=table
)");
}

TEST_F(Explored, JsonHasNothingAtAPlaceThatIsNotThere) {
    write("league.json", league);
    expectExplored({"league.json", "--at", "table/coaches"}, R"(
league.json has nothing at "table/coaches": there is no "coaches", but id, name, last, coach, a/b.
)",
                   1);
}

TEST_F(Explored, ALeafHasNothingBelowIt) {
    write("league.json", league);
    expectExplored({"league.json", "--at", "table/id"}, R"(
league.json has nothing below "table/id": what stands there has no names in it.
)",
                   1);
}

TEST_F(Explored, WhatIsSoughtIsFoundAmongMoreNamesThanAreKept) {
    std::string json = "{";
    std::string xml = "<l>";
    for (int name = 0; name < 3000; ++name) {
        json += "\"n" + std::to_string(name) + "\": {\"v\": 1}, ";
        xml += "<n" + std::to_string(name) + ">1</n" + std::to_string(name) + ">";
    }
    write("many.json", json + R"("last": {"v": [{"who": "ÅSA"}, {"who": "Bo"}]}})");
    write("many.xml", xml + "<last><v><w>ÅSA</w></v><v><w>Bo</w></v></last></l>");
    const std::string who = R"(
many.json is JSON, 55.9 kB
records  name  kind   first value  select it by
      2  who   texts  ÅSA          --set xpath=last/v/who

Load one, for example: intake-workbench load many.json --set mode=DataArray --set xpath=last/v/who
)";
    expectExplored({"many.json", "--find", "åsa"}, who);
    expectExplored({"many.json", "--at", "last/v"}, who);
    expectExplored({"many.json", "--at", "last", "--find", "WHO"}, who);
    const std::string w = R"(
many.xml is XML, 45.8 kB
records  name  kind   first value  select it by
      2  w     texts  ÅSA          --set xpath=/l/last/v/w

Load one, for example: intake-workbench load many.xml --set mode=DataArray --set xpath=/l/last/v/w
)";
    expectExplored({"many.xml", "--find", "åsa"}, w);
    expectExplored({"many.xml", "--at", "/l/last/v"}, w);
    expectExplored({"many.json", "--at", "none"}, R"(
many.json has nothing at "none": there is no "none", but n0, n1, n2, n3, n4, n5, n6, n7 and 2993 more.
)",
                   1);
}

TEST_F(Explored, NothingThatIsFoundIsSaid) {
    write("league.json", league);
    expectExplored({"league.json", "--find", "zebra"}, R"(
league.json is JSON, 187 bytes.
Nothing in it has "zebra" in its name or its values.
)");
}

TEST_F(Explored, XmlIsAnOutlineOfPathsWithTheirNamespaces) {
    write("feed.xml",
          "<feed xmlns='urn:feed' xmlns:m='urn:more'><entry id='1'><title>Wind</title>"
          "<m:rank>1</m:rank></entry><entry><title>Rain</title></entry></feed>");
    expectExplored({"feed.xml"}, R"(
feed.xml is XML, 142 bytes
records  name         kind        first value  select it by
      1  d:feed       elements                 --set 'namespaces=xmlns:d="urn:feed"' --set xpath=/d:feed
      2    d:entry    elements                 --set 'namespaces=xmlns:d="urn:feed"' --set xpath=/d:feed/d:entry
      1      @id      attributes  1            --set 'namespaces=xmlns:d="urn:feed"' --set xpath=/d:feed/d:entry/@id
      2      d:title  texts       Wind         --set 'namespaces=xmlns:d="urn:feed"' --set xpath=/d:feed/d:entry/d:title
      1      m:rank   texts       1            --set 'namespaces=xmlns:d="urn:feed" xmlns:m="urn:more"' --set xpath=/d:feed/d:entry/m:rank

Load one, for example: intake-workbench load feed.xml --set mode=DataArray --set 'namespaces=xmlns:d="urn:feed"' --set xpath=/d:feed/d:entry
)");
}

TEST_F(Explored, ThePrefixXmlNeedsNoDeclaration) {
    write("feed.xml", "<f><t\nxml:lang='en'>Wind</t></f>");
    expectExplored({"feed.xml", "--at", "/f/t"}, R"(
feed.xml is XML, 32 bytes
records  name       kind        first value  select it by
      1  @xml:lang  attributes  en           --set xpath=/f/t/@xml:lang
)");
}

TEST_F(Explored, NamespacesOfAnyAddressAreDeclared) {
    write("feed.xml", "<f xmlns:m=\"urn:o'neil&amp;&quot;&lt;\"><m:c/></f>");
    expectExplored({"feed.xml", "--find", "m:c"}, R"(
feed.xml is XML, 49 bytes
records  name  kind   first value  select it by
      1  m:c   texts               --set 'namespaces=xmlns:m="urn:o'\''neil&amp;&quot;&lt;"' --set xpath=/f/m:c
)");
}

TEST_F(Explored, XmlWithAPrefixThatNothingDeclaresIsNotLoaded) {
    for (const char* const text : {"<f><t a:b='1'/></f>", "<f xmlns='urn:f'><a:t/></f>"}) {
        write("feed.xml", text);
        const ChildResult result = explore({"feed.xml"});
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find("Namespace prefix a"), std::string::npos) << result.err;
    }
}

TEST_F(Explored, ReferencesInAttributesOfXmlAreDecoded) {
    write("feed.xml", "<f xmlns:m='urn:m'><c id='A&#38;B&#x41; &lt;&amp;&quot;'/></f>");
    expectExplored({"feed.xml", "--find", "&BA"}, R"(
feed.xml is XML, 62 bytes
records  name  kind        first value  select it by
      1  @id   attributes  A&BA <&"     --set xpath=/f/c/@id
)");
}

TEST_F(Explored, XmlIsListedBelowAPlace) {
    write("league.xml", "<l><c id='1'><n>Quay</n></c><c id='2'><n>Pier</n></c></l>");
    expectExplored({"league.xml", "--at", "/l/c"}, R"(
league.xml is XML, 57 bytes
records  name  kind        first value  select it by
      2  @id   attributes  1            --set xpath=/l/c/@id
      2  n     texts       Quay         --set xpath=/l/c/n

Load one, for example: intake-workbench load league.xml --set mode=DataArray --set xpath=/l/c/@id
)");
}

TEST_F(Explored, XmlHasNothingAtAPlaceThatIsNotThere) {
    write("league.xml", "<l><c id='1'><n>Quay</n></c><c id='2'><n>Pier</n></c></l>");
    expectExplored({"league.xml", "--at", "/l/d"}, R"(
league.xml has nothing at "/l/d": there is no "d", but c.
)",
                   1);
}

TEST_F(Explored, XmlThatIsCutIsSaid) {
    write("league.xml", "<l><c id='1'><n>Quay</n>");
    expectExplored({"league.xml"}, R"(
league.xml is no XML that can be read: Premature end of data in tag c line 1 (line 1, column 25).
)",
                   1);
}

TEST_F(Explored, PagesAreListedByTheirTables) {
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

TEST_F(Explored, ATableOfAPageIsListedByItsColumns) {
    write("swim.html", page);
    expectExplored({"swim.html", "--at", "ID final"}, R"(
swim.html is an HTML page titled "Harbour swim", 239 bytes
records  name  kind    first value  select it by
      1  Rank  column  1            --set 'sheet=ID final' --set fromRow=1 --set key=Rank --set 'mode=Data Field Array'
      1        column  Bo
      1  Rank  column  x
)");
}

TEST_F(Explored, APageHasNoTableAtAPlaceThatIsNotThere) {
    write("swim.html", page);
    expectExplored({"swim.html", "--at", "ID semifinal"}, R"(
swim.html has no table at "ID semifinal".
)",
                   1);
}

TEST_F(Explored, ATableIsNotSelectedByWhatDoesNotArrive) {
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

TEST_F(Explored, APageWithoutTablesIsSaid) {
    write("signin.html", "<!DOCTYPE html><title>Sign in</title><form></form>");
    expectExplored({"signin.html"}, R"(
signin.html is an HTML page titled "Sign in", 50 bytes.
Nothing in it can be selected.
)");
}

TEST_F(Explored, WorkbooksAreListedBySheetsAndColumns) {
    write("fixtures.xlsx", fixtureList());
    expectExplored({"fixtures.xlsx"}, R"(
fixtures.xlsx is a workbook, 1.6 kB
records  name         kind      first value  select it by
      2  Round 28     sheet                  --set 'sheet=Round 28'
      2    Home       texts     Holm         --set 'sheet=Round 28' --set range=Home
      2    Home odds  numbers   2.1          --set 'sheet=Round 28' --set 'range=[Home odds]'
      2    Live       switches  1            --set 'sheet=Round 28' --set range=Live
      0  Teams        sheet                  --set sheet=Teams
      0    Team       blank                  --set sheet=Teams --set range=Team

Load one, for example: intake-workbench load fixtures.xlsx --set mode=DataArray --set 'sheet=Round 28'
)");
}

TEST_F(Explored, WorkbooksHaveNoSheetAtAPlaceThatIsNotThere) {
    write("fixtures.xlsx", fixtureList());
    expectExplored({"fixtures.xlsx", "--at", "Clubs"}, R"(
fixtures.xlsx has no sheet "Clubs", but Round 28, Teams.
)",
                   1);
}

TEST_F(Explored, WhatIsNoneOfTheseIsSaid) {
    write("clubs.csv", "club;points\n");
    expectExplored({"clubs.csv"}, R"(
clubs.csv is a text, and neither JSON nor XML nor HTML; what is looked into is JSON, XML, HTML pages, workbooks and databases.
)",
                   1);
}

TEST_F(Explored, JsonThatCannotBeReadIsSaid) {
    write("league.json", R"({"a": [1, )");
    expectExplored({"league.json"}, R"(
league.json is no JSON that can be read; explain says where it ends.
)",
                   1);
}

TEST_F(Explored, JsonWithAZeroByteBehindItIsNotRead) {
    write("league.json", std::string("{\"a\": 1}\0", 9));
    expectExplored({"league.json"}, R"(
league.json is no JSON that can be read; explain says where it ends.
)",
                   1);
}

TEST_F(Explored, WhatIsFoundCommandsNoTerminal) {
    write("-clubs.json", R"([{"a\u001Bc": "\r\u009B"}, {"a\u001Bc": 1}])");
    expectExplored({"--", "-clubs.json"}, R"(
-clubs.json is JSON, 43 bytes
records  name   kind            first value  select it by
      2  *      objects                      --set 'xpath=*'
      2    a c  texts, numbers               --set $'xpath=*/a\x1bc'

Load one, for example: intake-workbench load ./-clubs.json --set mode=DataArray --set 'xpath=*'
)");
}

TEST_F(Explored, AFileThatIsNotThereIsSaid) {
    expectExplored({"absent.json"}, R"(
absent.json is not there; it was looked for as FOLDER/absent.json.
)",
                   1);
}

TEST_F(Explored, NoSourceIsAMistake) {
    expectExplored({}, R"(
intake-workbench: Give a source to explore: a file or a URL.
)",
                   2);
}

TEST_F(Explored, AUrlIsListedWithItsStatus) {
    intake::ScriptedServer server(
        [](const std::string&) { return intake::reply("404 Not Found", R"([{"id": 1}])"); });
    expectExplored({server.url("/clubs")}, R"(
http://SERVER/clubs is JSON, with status 404, 11 bytes
records  name  kind     first value  select it by
      1  *     objects               --set 'xpath=*'
      1    id  numbers  1            --set 'xpath=*/id'
)");
}

TEST_F(Explored, TheJsonFormHasAllOfAnEntry) {
    write("league.json", league);
    const ChildResult result = explore({"league.json", "--out", "json", "--limit", "1"});
    EXPECT_EQ("\n" + masked(result.out), R"(
{
  "source": "league.json",
  "kind": "JSON",
  "queryMode": "JSON",
  "bytes": 187,
  "leftOut": 2,
  "notKept": 0,
  "entries": [
    {
      "name": "season",
      "depth": 0,
      "kind": "numbers",
      "records": 1,
      "value": "2027",
      "place": "",
      "set": {
        "xpath": "season"
      }
    }
  ]
}
)");
}

TEST_F(Explored, XmlIsSearchedAndLimited) {
    write("league.xml", "<l><c id='1'><n>Quay</n></c><c id='2'><n>Pier</n></c></l>");
    expectExplored({"league.xml", "--find", "pier"}, R"(
league.xml is XML, 57 bytes
records  name  kind   first value  select it by
      2  n     texts  Pier         --set xpath=/l/c/n

Load one, for example: intake-workbench load league.xml --set mode=DataArray --set xpath=/l/c/n
)");
    expectExplored({"league.xml", "--limit", "2"}, R"(
league.xml is XML, 57 bytes
records  name  kind      first value  select it by
      1  l     elements               --set xpath=/l
      2    c   elements               --set xpath=/l/c

Load one, for example: intake-workbench load league.xml --set mode=DataArray --set xpath=/l/c
)");
}

TEST_F(Explored, PagesAreSearchedAndLimited) {
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
(2 more; --limit lists more, --at goes down, --find searches)

Load one, for example: intake-workbench load swim.html --set mode=DataArray --set sheet= --set fromRow=1
)");
}

TEST_F(Explored, WorkbooksAreSearchedAndLimited) {
    write("fixtures.xlsx", fixtureList());
    expectExplored({"fixtures.xlsx", "--find", "HOLM"}, R"(
fixtures.xlsx is a workbook, 1.6 kB
records  name    kind   first value  select it by
      2    Home  texts  Holm         --set 'sheet=Round 28' --set range=Home

Load one, for example: intake-workbench load fixtures.xlsx --set mode=DataArray --set 'sheet=Round 28' --set range=Home
)");
    expectExplored({"fixtures.xlsx", "--limit", "2"}, R"(
fixtures.xlsx is a workbook, 1.6 kB
records  name      kind   first value  select it by
      2  Round 28  sheet               --set 'sheet=Round 28'
      2    Home    texts  Holm         --set 'sheet=Round 28' --set range=Home
(4 more; --limit lists more, --at goes down, --find searches)

Load one, for example: intake-workbench load fixtures.xlsx --set mode=DataArray --set 'sheet=Round 28'
)");
}

TEST_F(Explored, AHiddenSheetIsListedAsSuch) {
    write("fixtures.xlsx",
          intake::TestBook()
              .sheet("Teams", "<row><c t='inlineStr'><is><t>Team</t></is></c></row>")
              .part("xl/workbook.xml",
                    "<workbook xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main' "
                    "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'>"
                    "<sheets><sheet name='Teams' sheetId='1' state='hidden' r:id='rId1'/></sheets>"
                    "</workbook>")
              .bytes());
    expectExplored({"fixtures.xlsx"}, R"(
fixtures.xlsx is a workbook, 1.2 kB
records  name    kind          first value  select it by
      0  Teams   hidden sheet               --set sheet=Teams
      0    Team  blank                      --set sheet=Teams --set range=Team
)");
}
