// What `explore` lists of JSON documents.

#include "tests/workbench/cli/linux/ExploreTest.h"

namespace {

constexpr const char* league = R"({"season": 2027, "table": [
  {"id": 7, "name": "Harbour", "last": ["W", "D"], "coach": {"name": "Ada"}},
  {"id": 9, "name": "Quay", "last": [], "coach": null, "a/b": 1}],
  "notes": []})";

class ExploredJson : public ExploreTest {};

}  // namespace

TEST_F(ExploredJson, JsonIsAnOutlineOfPaths) {
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

TEST_F(ExploredJson, AnArrayInAnArrayIsAValue) {
    write("nested.json", R"({"b":0,"a":[[1,2],[3],{"c":4}]})");
    expectExplored({"nested.json"}, R"(
nested.json is JSON, 31 bytes
records  name  kind             first value  select it by
      1  b     numbers          0            --set xpath=b
      3  a     arrays, objects               --set xpath=a
      3    *   numbers          1
      1    c   numbers          4            --set xpath=a/c

Load one, for example: intake-workbench load nested.json --set mode=DataArray --set xpath=a
)");
}

TEST_F(ExploredJson, WhatStandsInAnArrayBesideObjectsHasNoPath) {
    write("mixed.json", R"({"a":[[{"x":1}],{"c":4}]})");
    expectExplored({"mixed.json"}, R"(
mixed.json is JSON, 25 bytes
records  name   kind             first value  select it by
      2  a      arrays, objects               --set xpath=a
      1    *    objects
      1      x  numbers          1
      1    c    numbers          4            --set xpath=a/c

Load one, for example: intake-workbench load mixed.json --set mode=DataArray --set xpath=a
)");
}

TEST_F(ExploredJson, JsonIsListedBelowAPlace) {
    write("league.json", league);
    expectExplored({"league.json", "--at", "table/coach"}, R"(
league.json is JSON, 187 bytes
records  name  kind   first value  select it by
      1  name  texts  Ada          --set xpath=table/coach/name
)");
}

TEST_F(ExploredJson, JsonIsSearchedByNamesAndValues) {
    write("league.json", league);
    expectExplored({"league.json", "--find", "ada"}, R"(
league.json is JSON, 187 bytes
records  name  kind   first value  select it by
      1  name  texts  Ada          --set xpath=table/coach/name
)");
}

TEST_F(ExploredJson, JsonIsListedByWholeLevelsAsFarAsTheyFit) {
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

TEST_F(ExploredJson, JsonHasNothingAtAPlaceThatIsNotThere) {
    write("league.json", league);
    expectExplored({"league.json", "--at", "table/coaches"}, R"(
league.json has nothing at "table/coaches": there is no "coaches", but id, name, last, coach, a/b.
)",
                   1);
}

TEST_F(ExploredJson, ALeafHasNothingBelowIt) {
    write("league.json", league);
    expectExplored({"league.json", "--at", "table/id"}, R"(
league.json has nothing below "table/id": what stands there has no names in it.
)",
                   1);
}

TEST_F(ExploredJson, NothingThatIsFoundIsSaid) {
    write("league.json", league);
    expectExplored({"league.json", "--find", "zebra"}, R"(
league.json is JSON, 187 bytes.
Nothing in it has "zebra" in its name or its values.
)");
}

TEST_F(ExploredJson, JsonThatCannotBeReadIsSaid) {
    write("league.json", R"({"a": [1, )");
    expectExplored({"league.json"}, R"(
league.json is no JSON that can be read; explain says where it ends.
)",
                   1);
}

TEST_F(ExploredJson, JsonWithAZeroByteBehindItIsNotRead) {
    write("league.json", std::string("{\"a\": 1}\0", 9));
    expectExplored({"league.json"}, R"(
league.json is no JSON that can be read; explain says where it ends.
)",
                   1);
}

TEST_F(ExploredJson, WhatIsFoundCommandsNoTerminal) {
    write("-clubs.json", R"([{"a\u001Bc": "\r\u009B"}, {"a\u001Bc": 1}])");
    expectExplored({"--", "-clubs.json"}, R"(
-clubs.json is JSON, 43 bytes
records  name   kind            first value  select it by
      2  *      objects                      --set 'xpath=*'
      2    a c  texts, numbers               --set $'xpath=*/a\x1bc'

Load one, for example: intake-workbench load ./-clubs.json --set mode=DataArray --set 'xpath=*'
)");
}

TEST_F(ExploredJson, TheJsonFormHasAllOfAnEntry) {
    write("league.json", league);
    const ChildResult result = explore({"league.json", "--out", "json", "--limit", "1"});
    EXPECT_EQ("\n" + masked(result.out), R"(
{
  "source": "league.json",
  "kind": "JSON",
  "queryMode": "JSON",
  "bytes": 187,
  "from": 0,
  "total": 3,
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
      },
      "type": "value"
    }
  ]
}
)");
}

TEST_F(ExploredJson, JsonIsListedPageByPage) {
    write("league.json", league);
    EXPECT_EQ(pageOf({"league.json", "--limit", "2"}), "season, table of 3");
    EXPECT_EQ(pageOf({"league.json", "--limit", "2", "--from", "2"}), "notes of 3");
    EXPECT_EQ(pageOf({"league.json", "--limit", "2", "--from", "9"}), " of 3");
    EXPECT_EQ(pageOf({"league.json", "--at", "table", "--limit", "2", "--from", "1"}),
              "name, last of 5");
    EXPECT_EQ(pageOf({"league.json", "--find", "a", "--limit", "2", "--from", "1"}),
              "table, name of 7");
}

TEST_F(ExploredJson, APageBehindTheLastOneIsSaid) {
    write("league.json", league);
    expectExplored({"league.json", "--from", "9"}, R"(
league.json is JSON, 187 bytes.
Only 9 can be listed: --from passes over them all.
)");
}

TEST_F(ExploredJson, APageOfNothingIsSaid) {
    write("league.json", "[7]");
    expectExplored({"league.json", "--limit", "0"}, R"(
league.json is JSON, 3 bytes.
Nothing is listed: --limit is 0.
)");
}

TEST_F(ExploredJson, OneEntryOfAnArrayIsListedWithTheSettingsOfItAlone) {
    write("league.json", league);
    expectExplored({"league.json", "--at", "table[1]"}, R"(
league.json is JSON, 187 bytes
records  name      kind     first value  select it by
      1  table[1]  objects               --set 'xpath=table[1]'
      1    id      numbers  9            --set 'xpath=table[1]/id'
      1    name    texts    Quay         --set 'xpath=table[1]/name'
      0    last    empty
      1    coach   nulls    null         --set 'xpath=table[1]/coach'
)");
    expectExplored({"league.json", "--at", "table[2]"}, R"(
league.json has nothing at "table[2]".
)",
                   1);
}

TEST_F(ExploredJson, AnElementOfTheDocumentIsSelectedByItsRow) {
    write("teams.json", R"([{"id": 7, "last": ["W", "D"]}, {"id": 9, "last": ["L", "D"]}])");
    expectExplored({"teams.json", "--at", "*[1]"}, R"(
teams.json is JSON, 62 bytes
records  name    kind     first value  select it by
      1  *[1]    objects               --set 'xpath=*' --set fromRow=1 --set numRows=1
      1    id    numbers  9            --set 'xpath=*/id' --set fromRow=1 --set numRows=1
      2    last  texts    L            --set 'xpath=*/last' --set fromRow=2 --set numRows=2

Load one, for example: intake-workbench load teams.json --set mode=DataArray --set 'xpath=*/last' --set fromRow=2 --set numRows=2
)");
}

TEST_F(ExploredJson, AValueOfAnEntryOffersAllThatHaveIt) {
    write("clubs.json",
          R"({"clubs": [{"id": 7, "town": "Köge", "f": null}, {"id": 9, "town": "Köge"},
                           {"id": 9.0, "town": "a/b", "x=y": 1, "z": " 1"}]})");
    EXPECT_EQ(wheresOf({"clubs.json", "--at", "clubs[0]"}), R"(
clubs[id=7]: 1
clubs[town=Köge]: 2
clubs[f=null]: 1)");
    EXPECT_EQ(wheresOf({"clubs.json", "--at", "clubs[2]"}), R"(
clubs[id=9.0]: 1)");
}

TEST_F(ExploredJson, AnArrayIsPreviewedWithAPlaceForEachOfItsEntries) {
    write("league.json", league);
    EXPECT_EQ(previewOf({"league.json"}), "none");
    EXPECT_EQ(previewOf({"league.json", "--at", "table"}), R"(
id|name|last|a/b
7|Harbour|W, D|
9|Quay||1
0
table[0]|table[1])");
    write("groups.json", R"([{"t": [{"c": 1}, {"c": 2}]}, {"t": [{"c": 3}]}])");
    EXPECT_EQ(previewOf({"groups.json", "--at", "*/t"}), "\nc\n1\n2\n3\n0");
    EXPECT_EQ(previewOf({"groups.json", "--at", "*"}), "\n0\n*[0]|*[1]");
}

TEST_F(ExploredJson, ALongArrayIsPreviewedByItsStart) {
    std::string text = "[";
    for (int i = 0; i < 150; ++i)
        text += "{\"id\": " + std::to_string(i) + "}, ";
    write("long.json", text + "{\"id\": 0}]");
    const rapidjson::Document json = explored({"long.json", "--at", "*"});
    EXPECT_EQ(json["preview"]["rows"].Size(), 100U);
    EXPECT_STREQ(json["preview"]["rows"][99][0].GetString(), "99");
    EXPECT_EQ(json["preview"]["leftOut"].GetUint(), 51U);
}

TEST_F(ExploredJson, NumbersOfAnySizeAreListedAsTheyStandThere) {
    write("n.json", R"({"r": [{"a": 1e400, "b": 7.50, "c": 12345678901234567890, "d": -0.0}]})");
    expectExplored({"n.json", "--at", "r"}, R"(
n.json is JSON, 70 bytes
records  name  kind     first value           select it by
      1  a     numbers  1e400                 --set xpath=r/a
      1  b     numbers  7.50                  --set xpath=r/b
      1  c     numbers  12345678901234567890  --set xpath=r/c
      1  d     numbers  -0.0                  --set xpath=r/d
)");
    for (const char* const fault : {"[-]", "[1.]", "[1e]", "[.5]", "[01]"}) {
        write("n.json", fault);
        EXPECT_EQ(explore({"n.json"}).status, 1) << fault;
    }
}
