// What the scanner of whole documents reads by itself, and that it reads the same in windows of any
// size. The rest takes the slower parser.

#include "formats/xml/DocumentScanner.h"

#include <gtest/gtest.h>

namespace intake {

namespace {

/// Writes down what it is told.
class Notes {
public:
    bool startElement(const XmlTag& tag) {
        log += "<" + std::string(tag.name.whole);
        for (const XmlTagAttribute& each : tag.attributes) {
            log += " " + std::string(each.name.whole) + "=[" + std::string(each.value) + "]";
        }
        log += ">";
        return tag.name.whole != "refused";
    }
    void endElement() { log += "</>"; }
    void text(std::string_view text) { log += "T[" + std::string(text) + "]"; }
    void section(std::string_view text) { log += "S[" + std::string(text) + "]"; }
    void comment(std::string_view text) { log += "C[" + std::string(text) + "]"; }
    void instruction(std::string_view target, const std::string_view* data) {
        log += "I[" + std::string(target) + (data == nullptr ? "" : "," + std::string(*data)) + "]";
    }

    std::string log;
};

constexpr const char* UNKNOWN = "unknown";

/// What is told of a document that is read in windows which grow by so many bytes.
std::string scanned(const std::string& document, size_t step) {
    Notes notes;
    DocumentScanner<Notes> scanner(notes);
    std::string window;
    for (size_t at = 0; at < document.size();) {
        const std::string piece = document.substr(at, step);
        at += piece.size();
        window += piece;
        window.erase(0, scanner.scan(window.c_str(), window.size(), at == document.size()));
        if (scanner.isUnknown()) {
            return UNKNOWN;
        }
    }
    return scanner.isComplete() ? notes.log : UNKNOWN;
}

std::string scanned(const std::string& document) {
    return scanned(document, document.size() + 1);
}

TEST(DocumentScanner, TellsWhatADocumentHolds) {
    EXPECT_EQ(scanned("<?xml version='1.0' encoding=\"utf-8\" ?>\r\n<!--a--><?go now?>\n"
                      "<d:a xmlns:d='urn:d' b = \"1\"><b/>x &lt; y<![CDATA[<]]></d:a >\n<?end?>"),
              "C[a]I[go,now]<d:a xmlns:d=[urn:d] b=[1]><b></>T[x < y]S[<]</>I[end]");
}

TEST(DocumentScanner, ResolvesLineEndsAndReferences) {
    EXPECT_EQ(scanned("<a b=' \r\n\t&#10;&quot;' c='1'>\r\n\r&#13;<!--\r\n--><![CDATA[\r]]></a>"),
              "<a b=[   \n\"] c=[1]>T[\n\n\r]C[\n]S[\n]</>");
}

TEST(DocumentScanner, TellsAllResolvedValuesOfATagHoweverLongTheyAre) {
    const std::string text(100, 'x');
    EXPECT_EQ(scanned("<a b='&lt;' c='&gt;" + text + "' d='e' f='&amp;" + text + "'/>"),
              "<a b=[<] c=[>" + text + "] d=[e] f=[&" + text + "]></>");
}

/// An element of so many attributes.
std::string withAttributes(size_t count) {
    std::string tag = "<a";
    for (size_t i = 0; i < count; ++i) {
        tag += " b" + std::to_string(i) + "=''";
    }
    return tag + "/>";
}

TEST(DocumentScanner, LeavesATagOfMoreAttributesThanThereIsRoomForToTheParser) {
    EXPECT_NE(scanned(withAttributes(64)), UNKNOWN);
    EXPECT_EQ(scanned(withAttributes(65)), UNKNOWN);
}

TEST(DocumentScanner, ReadsTheSameInWindowsOfAnySize) {
    const std::string document =
        "\xEF\xBB\xBF<?xml version='1.0' standalone='yes'?>\r\n<!-- - -->\n<a b='\xC3\xA9' "
        "c='&#x20AC;>'>]]\r\n<b >\xE2\x82\xAC &amp; ]</b\r\n><![CDATA[]]x]]><?p  q?>\r<p:c "
        "p:d=\"'\"/>" +
        std::string(300, 'x') + "</a>\r\n";
    const std::string whole = scanned(document);
    EXPECT_NE(whole, UNKNOWN);
    for (size_t step = 1; step < document.size(); ++step) {
        EXPECT_EQ(scanned(document, step), whole) << step;
    }
}

TEST(DocumentScanner, LeavesAllElseToTheParserInWindowsOfAnySize) {
    using std::string_literals::operator""s;
    for (const std::string& document : {"<!DOCTYPE a><a/>"s,
                                        "<\xC3\xB6/>"s,
                                        "<a>&e;</a>"s,
                                        "<a>\x01</a>"s,
                                        "<a>\xFF</a>"s,
                                        "<a>\0</a>"s,
                                        "<a b='\xFF&amp;'/>"s,
                                        "<a>\xFF 32 bytes that are taken in one go </a>"s,
                                        "<a>]]> 32 bytes that are taken in one go </a>"s,
                                        "<a>]]></a>"s,
                                        "<a><!-- -- --></a>"s,
                                        "<a b='1' b='2'/>"s,
                                        "<a b='<'/>"s,
                                        "<a b='1'c='2'/>"s,
                                        "<a b=1/>"s,
                                        "<a b/>"s,
                                        "<a:b:c/>"s,
                                        "<a>"s,
                                        "<a></b>"s,
                                        "<a"s,
                                        "<a/><b/>"s,
                                        "<a/>x"s,
                                        "<a/>&#32;"s,
                                        "<a/><![CDATA[ ]]>"s,
                                        " <?xml version='1.0'?><a/>"s,
                                        "<?xml version='1.1'?><a/>"s,
                                        "<?xml version='1.0' encoding='latin1'?><a/>"s,
                                        "<a><?xml x?></a>"s,
                                        "<a><?XML x?></a>"s,
                                        "<a><?p:q?></a>"s,
                                        "<a><![CDATA[</a>"s,
                                        "<a><refused/></a>"s,
                                        ""s}) {
        EXPECT_EQ(scanned(document), UNKNOWN) << document;
        EXPECT_EQ(scanned(document + std::string(100, ' '), 1), UNKNOWN) << document;
    }
}

}  // namespace

}  // namespace intake
