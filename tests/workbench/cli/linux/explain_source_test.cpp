// `explain SOURCE`: a file or an address without settings.

#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

class ExplainedSource : public ExplainTest {
protected:
    void expectOf(const std::string& source, const std::string& text,
                  const Settings& settings = {"mode=DataArray"}) const {
        const ChildResult result = explain(settings, {source});
        EXPECT_EQ("\n" + masked(result.out), text);
        EXPECT_EQ(result.err, "");
    }
};

}  // namespace

TEST_F(ExplainedSource, IsLoadedAsWhatItIs) {
    write("clubs.json", R"({"clubs": [{"id": 7}, {"id": 9}]})");
    expectOf("clubs.json", R"(
clubs.json: 1 record, # s
  ✓ settings
  ✓ address   clubs.json
  ✓ fetched   33 bytes
  ✓ format    JSON
  ! selection the whole document
              "XPath" (xpath) is empty: the document is written as one value, and no records are counted.
              Set "XPath" (xpath) to the path of the records.
  ✓ store
  – key, rows, script: not looked at
  Try: --set xpath=clubs --set key=id   (2 records, checked)
)",
             {});
}

TEST_F(ExplainedSource, ThatIsNotThereIsTold) {
    expectOf("absent.json", R"(
absent.json: no records, # s
  ✓ settings
  ✗ address   absent.json
              The source is not there; it was looked for as FOLDER/absent.json.
              Correct "File Name" (filename). A path that does not begin at the root starts at the folder in which the host was started.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedSource, ThatNothingReadsIsTold) {
    write("clubs.csv", "club;points\n");
    expectOf("clubs.csv", R"(
clubs.csv: no records, # s
  ✓ settings
  ✓ address   clubs.csv
  ✓ fetched   12 bytes
  ✗ format    a text, and neither JSON nor XML nor HTML
              The query type is EXCEL, and the source is a text, and neither JSON nor XML nor HTML.
              What can be loaded is JSON, XML, HTML tables, worksheets and databases: have it as one of these.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedSource, BehindAnAddressThatNothingAnswersAtIsTold) {
    expectOf("http://127.0.0.1:1/clubs.json", R"(
http://SERVER/clubs.json: no records, # s
  ✓ settings
  ✗ address   http://SERVER/clubs.json
              The source cannot be reached: nothing answers at that address (SERVER).
              Check server and port in "File Name" (filename), that the server runs, and that no firewall keeps it from this machine.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}
