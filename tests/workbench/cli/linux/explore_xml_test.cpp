// What `explore` lists of XML documents.

#include "tests/workbench/cli/linux/ExploreTest.h"

namespace {

class ExploredXml : public ExploreTest {};

}  // namespace

TEST_F(ExploredXml, XmlIsAnOutlineOfPathsWithTheirNamespaces) {
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

TEST_F(ExploredXml, ThePrefixXmlNeedsNoDeclaration) {
    write("feed.xml", "<f><t\nxml:lang='en'>Wind</t></f>");
    expectExplored({"feed.xml", "--at", "/f/t"}, R"(
feed.xml is XML, 32 bytes
records  name       kind        first value  select it by
      1  @xml:lang  attributes  en           --set xpath=/f/t/@xml:lang
)");
}

TEST_F(ExploredXml, NamespacesOfAnyAddressAreDeclared) {
    write("feed.xml", "<f xmlns:m=\"urn:o'neil&amp;&quot;&lt;\"><m:c/></f>");
    expectExplored({"feed.xml", "--find", "m:c"}, R"(
feed.xml is XML, 49 bytes
records  name  kind   first value  select it by
      1  m:c   texts               --set 'namespaces=xmlns:m="urn:o'\''neil&amp;&quot;&lt;"' --set xpath=/f/m:c
)");
}

TEST_F(ExploredXml, XmlWithAPrefixThatNothingDeclaresIsNotLoaded) {
    for (const char* const text : {"<f><t a:b='1'/></f>", "<f xmlns='urn:f'><a:t/></f>"}) {
        write("feed.xml", text);
        const ChildResult result = explore({"feed.xml"});
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find("Namespace prefix a"), std::string::npos) << result.err;
    }
}

TEST_F(ExploredXml, ReferencesInAttributesOfXmlAreDecoded) {
    write("feed.xml", "<f xmlns:m='urn:m'><c id='A&#38;B&#x41; &lt;&amp;&quot;'/></f>");
    expectExplored({"feed.xml", "--find", "&BA"}, R"(
feed.xml is XML, 62 bytes
records  name  kind        first value  select it by
      1  @id   attributes  A&BA <&"     --set xpath=/f/c/@id
)");
}

TEST_F(ExploredXml, XmlIsListedBelowAPlace) {
    write("league.xml", "<l><c id='1'><n>Quay</n></c><c id='2'><n>Pier</n></c></l>");
    expectExplored({"league.xml", "--at", "/l/c"}, R"(
league.xml is XML, 57 bytes
records  name  kind        first value  select it by
      2  @id   attributes  1            --set xpath=/l/c/@id
      2  n     texts       Quay         --set xpath=/l/c/n

Load one, for example: intake-workbench load league.xml --set mode=DataArray --set xpath=/l/c/@id
)");
}

TEST_F(ExploredXml, XmlHasNothingAtAPlaceThatIsNotThere) {
    write("league.xml", "<l><c id='1'><n>Quay</n></c><c id='2'><n>Pier</n></c></l>");
    expectExplored({"league.xml", "--at", "/l/d"}, R"(
league.xml has nothing at "/l/d": there is no "d", but c.
)",
                   1);
}

TEST_F(ExploredXml, XmlThatIsCutIsSaid) {
    write("league.xml", "<l><c id='1'><n>Quay</n>");
    expectExplored({"league.xml"}, R"(
league.xml is no XML that can be read: Premature end of data in tag c line 1 (line 1, column 25).
)",
                   1);
}

TEST_F(ExploredXml, XmlIsSearchedAndLimited) {
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

TEST_F(ExploredXml, XmlIsListedPageByPage) {
    write("league.xml", "<l><c id='1'><n>Quay</n><p>1</p></c><c id='2'><n>Pier</n></c></l>");
    EXPECT_EQ(pageOf({"league.xml", "--at", "/l/c", "--limit", "1", "--from", "1"}), "n of 3");
    EXPECT_EQ(pageOf({"league.xml", "--find", "1", "--limit", "1", "--from", "1"}), "p of 2");
}

TEST_F(ExploredXml, OneOfSeveralElementsIsListedWithTheSettingsOfItAlone) {
    write("league.xml", "<l><c id='1'><n>Quay</n></c><c id='2'><n>Pier</n><n/><p q='1'/></c></l>");
    expectExplored({"league.xml", "--at", "/l/c[2]"}, R"(
league.xml is XML, 71 bytes
records  name     kind        first value  select it by
      1  /l/c[2]  elements                 --set 'xpath=/l/c[2]'
      1    @id    attributes  2            --set 'xpath=/l/c[2]/@id'
      2    n      texts       Pier         --set 'xpath=/l/c[2]/n'
      1    p      texts                    --set 'xpath=/l/c[2]/p'

Load one, for example: intake-workbench load league.xml --set mode=DataArray --set 'xpath=/l/c[2]/n'
)");
    expectExplored({"league.xml", "--at", "/l/c[3"}, R"(
league.xml has nothing at "/l/c[3".
)",
                   1);
}

TEST_F(ExploredXml, AValueOfAnElementOffersAllThatHaveIt) {
    write("feed.xml",
          "<f xmlns='urn:f' xmlns:m='urn:m'><c id='1'><t>O'Hara</t><m:r>1</m:r></c>"
          "<c><t>O'Hara</t></c><c><t>'\"</t></c></f>");
    EXPECT_EQ(wheresOf({"feed.xml", "--at", "/d:f/d:c[1]"}), R"(
/d:f/d:c[@id='1']: 1
/d:f/d:c[d:t="O'Hara"]: 2
/d:f/d:c[m:r='1']: 1)");
    EXPECT_EQ(wheresOf({"feed.xml", "--at", "/d:f/d:c[3]"}), "");
}

TEST_F(ExploredXml, ADeclarationCountsOnlyInTheTagOfTheRoot) {
    const std::string head = "<?xml version=\"1.0\"?>\n";
    for (const auto& [text, names] :
         {std::pair("<f a='1' xmlns='urn:f'><c/></f>", "d:f, @a, d:c of 3"),
          {"<f a=\" xmlns='urn:f'\"><c/></f>", "f, @a, c of 3"},
          {"<f><c> xmlns='urn:f'</c></f>", "f, c of 2"},
          {"<f><c xmlns='urn:f'/></f>", "f, d:c of 2"},
          {"<f xmlns=''><c/></f>", "f, c of 2"},
          {"<f a='>' xmlns='urn:f'><c/></f>", "d:f, @a, d:c of 3"}}) {
        write("feed.xml", head + text);
        EXPECT_EQ(pageOf({"feed.xml"}), names) << text;
    }
}

TEST_F(ExploredXml, ElementsArePreviewedWithAPlaceForEach) {
    for (const std::string space : {"", " xmlns:m='urn:m'"}) {
        write("league.xml", "<l" + space +
                                "><c id='1'><n>Quay</n><p>a</p><p>b</p></c><c id='2'><n>Pier"
                                "</n><x><y>1</y></x></c></l>");
        EXPECT_EQ(previewOf({"league.xml", "--at", "/l/c"}), R"(
@id|n|p
1|Quay|a, b
2|Pier|
0
/l/c[1]|/l/c[2])");
    }
}

TEST_F(ExploredXml, ZerosAtItsEndDoNoHarm) {
    write("zero.xml", std::string("<f><t>Wind</t></f>\n") + std::string(2, '\0'));
    expectExplored({"zero.xml"}, R"(
zero.xml is XML, 21 bytes
records  name  kind      first value  select it by
      1  f     elements               --set xpath=/f
      1    t   texts     Wind         --set xpath=/f/t
)");
}
