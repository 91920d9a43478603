// What `explain` says of the elements of XML that are selected.

#include "tests/workbench/cli/linux/ExplainedXml.h"

namespace {

constexpr const char* feed =
    R"(<feed xmlns="http://example.com/feed" xmlns:m="http://example.com/more">
  <entry><title>Wind</title><m:rank>1</m:rank></entry>
  <entry><title>Rain</title><m:rank>2</m:rank></entry>
</feed>)";

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
  Try: --set xpath=/league/group/club   (3 records, checked)
)");
}

TEST_F(ExplainedXml, ALastPredicateThatNothingMeetsIsLeftOut) {
    expectOf(league, {"xpath=/league/group/club[@id='xx']"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /league/group/club[@id='xx']
                            ^^^^^^^^^^^^^^ 3 club elements are there, and none meets [@id='xx']. "@id" is: ha, pi, qu.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group/club   (3 records, checked)
)");
}

TEST_F(ExplainedXml, APredicateThatIsMetBehindAMendedNameStays) {
    expectOf(league, {"xpath=/league/grup[@name='A']/club[@id='qu']"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /league/grup[@name='A']/club[@id='qu']
                      ^^^^^^^^^^^^^^^ "league" has no element "grup". It has: group.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set 'xpath=/league/group[@name='\''A'\'']/club'   (2 records, checked)
)");
}

TEST_F(ExplainedXml, AllPredicatesThatNothingMeetsAreLeftOut) {
    expectOf(league, {"xpath=/league/group[@name='Z']/club[@id='zz']"}, R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   285 bytes
  ✓ format    XML
  ✗ selection /league/group[@name='Z']/club[@id='zz']
                      ^^^^^^^^^^^^^^^^ 2 group elements are there, and none meets [@name='Z']. "@name" is: A, B.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set xpath=/league/group/club   (3 records, checked)
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
  Try: --set xpath=/league/group/club   (3 records, checked)
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
              Declare it in "Namespaces" (namespaces).
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

TEST_F(ExplainedXml, APrefixThatStandsForAnotherNamespaceIsNotDeclaredAnew) {
    expectOf("<m:list xmlns:m='urn:b'/>", {"xpath=/m:list", "namespaces=xmlns:m='urn:a'", "mode=1"},
             R"(
source.xml: no records, # s
  ✓ settings
  ✓ address   source.xml
  ✓ fetched   25 bytes
  ✓ format    XML
  ✗ selection /m:list
               ^^^^^^ The element "list" is there, but in the namespace "urn:b". In an XPath it needs a prefix, which "Namespaces" (namespaces) declares.
              Set "XPath" (xpath) to names that are there.
  – key, rows, script, store: not reached
  Try: --set 'namespaces=xmlns:m='\''urn:a'\'' xmlns:m2="urn:b"' --set xpath=/m2:list   (1 record, checked)
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
