// What `explain` says of XML.

#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

constexpr const char* league = R"(<?xml version="1.0"?>
<league season="2027">
  <group name="A"><club id="ha"><name>Harbour</name><points>12</points></club>
    <club id="pi"><name>Pier</name><points>4</points></club></group>
  <group name="B"><club id="qu"><name>Quay</name><points>9</points></club></group>
</league>)";

constexpr const char* feed =
    R"(<feed xmlns="http://example.com/feed" xmlns:m="http://example.com/more">
  <entry><title>Wind</title><m:rank>1</m:rank></entry>
  <entry><title>Rain</title><m:rank>2</m:rank></entry>
</feed>)";

class ExplainedXml : public ExplainTest {
protected:
    void expectOf(const std::string& content, const Settings& settings,
                  const std::string& text) const {
        write("source.xml", content);
        expectExplained(
            joined({"queryMode=XML", "filename=source.xml", "table=Team", "key=name"}, settings),
            text);
    }
};

}  // namespace

TEST_F(ExplainedXml, ThatLoadsHasATickAtEachStage) {
    expectOf(league, {"xpath=/league/group/club"}, R"(
source.xml: 3 records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✓ selection /league/group/club: 3 nodes
  ✓ key       name
  ✓ rows      all 3
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedXml, AStepWrongInOneLetterIsMarkedThere) {
    expectOf(league, {"xpath=/league/grup/club"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /league/grup/club
                      ^^^^ "league" has no element "grup". It has: group.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group/club   (3 records, checked)
)");
}

TEST_F(ExplainedXml, SeveralWrongStepsAreMendedTogether) {
    expectOf(league, {"xpath=/leage/group[@name='A']/clubs"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /leage/group[@name='A']/clubs
               ^^^^^ The document has no element "leage". It has: league.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set 'xpath=/league/group[@name='\''A'\'']/club'   (2 records, checked)
)");
}

TEST_F(ExplainedXml, AStepInOtherLetterCaseIsNotFound) {
    expectOf(league, {"xpath=/League/Group/Club"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /League/Group/Club
               ^^^^^^ The document has no element "League". It has: league.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group/club   (3 records, checked)
)");
}

TEST_F(ExplainedXml, AWrongStepAtAnyDepthIsTold) {
    expectOf(league, {"xpath=//clubb"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection //clubb
                ^^^^^ The document has nowhere an element "clubb". It has: league, group, club, name, points.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=//club   (3 records, checked)
)");
}

TEST_F(ExplainedXml, AnAttributeThatIsNotThereIsTold) {
    expectOf(league, {"xpath=/league/group/@nam", "mode=Data Field Array"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /league/group/@nam
                            ^^^^ "group" has no attribute "nam". It has: name.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group/@name   (2 records, checked)
)");
}

TEST_F(ExplainedXml, APredicateThatNothingMeetsIsToldWithTheValuesThatAreThere) {
    expectOf(league, {"xpath=/league/group[@name='C']/club"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /league/group[@name='C']/club
                      ^^^^^^^^^^^^^^^^ 2 group elements are there, and none meets [@name='C']. "@name" is: A, B.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group --set key=@name   (2 records, checked)
)");
}

TEST_F(ExplainedXml, APredicateOnWhatIsNotThereIsTold) {
    expectOf(league, {"xpath=/league/group[@title='A']/club"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /league/group[@title='A']/club
                      ^^^^^^^^^^^^^^^^^ 2 group elements are there, and none meets [@title='A']. None has "@title".
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group --set key=@name   (2 records, checked)
)");
}

TEST_F(ExplainedXml, AnElementOfADefaultNamespaceNeedsAPrefix) {
    expectOf(feed, {"xpath=/feed/entry", "key=*[1]"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   190 bytes
  ✓ format    XML
  ✗ selection /feed/entry
               ^^^^ The element "feed" is there, but in the namespace "http://example.com/feed". In an XPath it needs a prefix, which "Namespaces" (namespaces) declares.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set 'namespaces=xmlns:d="http://example.com/feed"' --set xpath=/d:feed/d:entry   (2 records, checked)
)");
}

TEST_F(ExplainedXml, AnElementOfAPrefixedNamespaceNeedsADeclaration) {
    expectOf(feed, {"xpath=//m:rank", "mode=Data Field Array"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   190 bytes
  ✓ format    XML
  ✗ selection //m:rank
                ^^^^^^ Nothing says what the prefix "m" stands for: "Namespaces" (namespaces) does not declare it.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set 'namespaces=xmlns:m="http://example.com/more"'   (2 records, checked)
)");
}

TEST_F(ExplainedXml, AnElementOfAPrefixedNamespaceWithoutThePrefixIsMended) {
    expectOf(feed, {"xpath=//rank", "mode=Data Field Array"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   190 bytes
  ✓ format    XML
  ✗ selection //rank
                ^^^^ The element "rank" is there, but in the namespace "http://example.com/more". In an XPath it needs a prefix, which "Namespaces" (namespaces) declares.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set 'namespaces=xmlns:m="http://example.com/more"' --set xpath=//m:rank   (2 records, checked)
)");
}

TEST_F(ExplainedXml, ADeclarationOfAnotherNamespaceIsNotTheOneThatIsThere) {
    expectOf(feed, {"xpath=/m:feed", "namespaces=xmlns:m=\"http://example.com/more\"", "mode=1"},
             R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   190 bytes
  ✓ format    XML
  ✗ selection /m:feed
               ^^^^^^ The element "feed" is there, but in the namespace "http://example.com/feed". In an XPath it needs a prefix, which "Namespaces" (namespaces) declares.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set 'namespaces=xmlns:m="http://example.com/more" xmlns:d="http://example.com/feed"' --set xpath=/d:feed   (1 record, checked)
)");
}

TEST_F(ExplainedXml, ANamespaceOfAnyAddressIsDeclared) {
    expectOf("<feed xmlns=\"urn:o'neil&amp;&quot;&lt;\"><entry id='1'/></feed>",
             {"xpath=/feed/entry", "key=@id"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   62 bytes
  ✓ format    XML
  ✗ selection /feed/entry
               ^^^^ The element "feed" is there, but in the namespace "urn:o'neil&"<". In an XPath it needs a prefix, which "Namespaces" (namespaces) declares.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set 'namespaces=xmlns:d="urn:o'\''neil&amp;&quot;&lt;"' --set xpath=/d:feed/d:entry   (1 record, checked)
)");
}

TEST_F(ExplainedXml, AnAttributeWithThePrefixXmlNeedsNoDeclaration) {
    expectOf("<l><c xml:lang='en'/><c xml:lang='de'/></l>",
             {"xpath=/l/c/@lang", "mode=Data Field Array"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   43 bytes
  ✓ format    XML
  ✗ selection /l/c/@lang
                   ^^^^^ The attribute "lang" is there, but in the namespace "http://www.w3.org/XML/1998/namespace". In an XPath it needs the prefix "xml", which needs no declaration.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=/l/c/@xml:lang   (2 records, checked)
)");
}

TEST_F(ExplainedXml, NamespacesThatAreNoDeclarationsAreTold) {
    expectOf(feed, {"xpath=/d:feed", "namespaces=d=http://example.com/feed"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   190 bytes
  ✓ format    XML
  ✗ selection d=http://example.com/feed
              "Namespaces" (namespaces) is not a sequence of declarations such as xmlns:a="http://example.com/a".
              Write it so, with blanks between several.
  – key, rows, script, store: not reached
)");
}

TEST_F(ExplainedXml, AnEmptyExpressionIsTold) {
    expectOf(league, {"xpath="}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection
              "XPath" (xpath) is empty: nothing says which nodes are the records.
              Set "XPath" (xpath) to an expression that finds the records.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group --set key=@name   (2 records, checked)
)");
}

TEST_F(ExplainedXml, WhatIsNoExpressionIsTold) {
    expectOf(league, {"xpath=/league/group["}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /league/group[
              The expression cannot be asked: it is no expression of XPath 1.0.
              Set "XPath" (xpath) to an expression that finds the records.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group --set key=@name   (2 records, checked)
)");
}

TEST_F(ExplainedXml, ANumberIsNoRecords) {
    expectOf(league, {"xpath=count(/league/group)"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection count(/league/group)
              The expression cannot be asked: it gives a number, a text or a truth value, and not nodes.
              Set "XPath" (xpath) to an expression that finds the records.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group --set key=@name   (2 records, checked)
)");
}

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
