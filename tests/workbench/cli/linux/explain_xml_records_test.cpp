// What `explain` says of the keys, rows, script and file of XML.

#include "tests/workbench/cli/linux/ExplainedXml.h"

TEST_F(ExplainedXml, AKeyThatSelectsNothingIsToldWithWhatIsThere) {
    expectOf(league, {"xpath=/league/group/club", "key=club"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✓ selection /league/group/club: 3 nodes
  ✗ key       club
              The key selects nothing in any of the 3 records, so all are left out. They have: @id, name, points.
              Set "Key" (key) to one of these.
  – rows, script, store: not reached
  Try: --set key=@id   (3 records, checked)
)");
}

TEST_F(ExplainedXml, AKeyThatIsAnAttributeNeedsItsSign) {
    expectOf(league, {"xpath=/league/group/club", "key=id"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✓ selection /league/group/club: 3 nodes
  ✗ key       id
              The key selects nothing in any of the 3 records, so all are left out. They have: @id, name, points.
              Set "Key" (key) to one of these.
  – rows, script, store: not reached
  Try: --set key=@id   (3 records, checked)
)");
}

TEST_F(ExplainedXml, AKeyThatRepeatsOverwrites) {
    expectOf(league, {"xpath=/league/group/club", "key=../@name"}, R"(
source.xml: 2 records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✓ selection /league/group/club: 3 nodes
  ! key       ../@name
              The keys are not unique: 1 record of 3 takes the place of an earlier one with the same key: A. 2 records are left.
              Set "Key" (key) to a child or attribute that differs from record to record, or "Field is a: " (mode) to DataArray.
  ✓ rows      all 3
  ✓ script
  ✓ store
  Try: --set key=@id   (3 records, checked)
)");
}

TEST_F(ExplainedXml, AKeyThatIsNoExpressionIsTold) {
    expectOf(league, {"xpath=/league/group/club", "key=name["}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✓ selection /league/group/club: 3 nodes
  ✗ key       name[
              The expression cannot be asked: it is no expression of XPath 1.0.
              Set "Key" (key) to the name of a child, or to @ and that of an attribute.
  – rows, script, store: not reached
  Try: --set key=@id   (3 records, checked)
)");
}

TEST_F(ExplainedXml, AFirstRowBehindTheEndIsTold) {
    expectOf(league, {"xpath=/league/group/club", "fromRow=3"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✓ selection /league/group/club: 3 nodes
  ✗ rows      from 3
              There are 3 records, 0 to 2.
              Set "From row" (fromRow) to the first one that is wanted.
  – key: not looked at
  – script, store: not reached
  Try: --set fromRow=   (3 records, checked)
)");
}

TEST_F(ExplainedXml, AFileThatIsCutIsTold) {
    expectOf(std::string(league).substr(0, 120), {"xpath=/league/group/club"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   120 bytes
  ✗ format    XML that is not whole or not right
              Expected '>' (line 3, column 76). The text ends there: it is cut off.
              Fetch it again, or ask whoever writes it.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedXml, AFileThatIsEmptyIsTold) {
    expectOf("", {"xpath=/league/group/club"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   0 bytes
  ✗ format    empty
              The source is empty: it has not one character.
              Wait until it is written, or ask whoever writes it.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedXml, AValueThatEndsItsFrameIsAWarning) {
    expectOf("<l><c><name>x\";Score=\"9</name></c></l>", {"xpath=/l/c"}, R"(
source.xml: 1 record, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   38 bytes
  ✓ format    XML
  ✓ selection /l/c: 1 node
  ✓ key       name
  ✓ rows      all 1
  ! script    names and values are copied as they are
              The value "x";Score="9" of "name" ends its own frame. What is behind its end is carried out: it sets Score.
              Have it written otherwise in the source, or leave it out of what is loaded.
  ✓ store
)");
}

TEST_F(ExplainedXml, BlanksBetweenChildrenOfARecordAreTextsOfNoName) {
    expectOf("<l><c> <name>a</name> </c></l>", {"xpath=/l/c"}, R"(
source.xml: 1 record, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   30 bytes
  ✓ format    XML
  ✓ selection /l/c: 1 node
  ✓ key       name
  ✓ rows      all 1
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedXml, ThatIsWrongBeforeItsEndIsNotCut) {
    expectOf("<l><c></l>", {"xpath=/l/c"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   10 bytes
  ✗ format    XML that is not whole or not right
              Opening and ending tag mismatch: c line 1 and l (line 1, column 11).
              Have the source mended.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedXml, DeclarationsOfNamespacesAreNotLookedAt) {
    expectOf("<l xmlns:a='urn:a'/>", {"xpath=//namespace::*", "mode=DataArray"}, R"(
source.xml: 2 records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   20 bytes
  ✓ format    XML
  ✓ selection //namespace::*: 2 nodes
  ✓ store
  – key, rows, script: not looked at
)");
}

TEST_F(ExplainedXml, AnElementThatComesTwiceIsAWarning) {
    write("source.xml", "<r>\n <i>\n  <n>1</n>\n  <n>2</n>\n </i>\n</r>");
    const Explained explained(
        explain({"queryMode=XML", "filename=source.xml", "table=T", "mode=DataArray", "xpath=/r/i"},
                {"--out", "json"})
            .out);
    EXPECT_TRUE(explained.isOk);
    EXPECT_EQ(explained.stages[7].cause,
              "The name \"n\" comes twice in a record; the last value counts.");
}

TEST_F(ExplainedXml, APageThatIsXmlIsReadAsSuch) {
    expectOf("<html><body><p>1</p><p>2</p></body></html>", {"xpath=/html/body/p", "mode=DataArray"},
             R"(
source.xml: 2 records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   42 bytes
  ✓ format    XML
  ✓ selection /html/body/p: 2 nodes
  ✓ key       none is needed
  ✓ rows      all 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedXml, AFileThatIsCutBehindATagIsTold) {
    expectOf("<l><r>1</r>", {"xpath=/l/r"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   11 bytes
  ✗ format    XML that is not whole or not right
              Premature end of data in tag l line 1 (line 1, column 12). The text ends there: it is cut off.
              Fetch it again, or ask whoever writes it.
  – selection, key, rows, script, store: not reached
)");
}
