// The tree of a document that is scanned is the one that the parser gives.

#include <gtest/gtest.h>

#include "formats/xml/TreeReader.h"
#include "formats/xml/xml_load.h"
#include "tests/formats/xml/tree_text.h"
#include "tests/readers/xml/RandomXml.h"

namespace intake {

namespace {

constexpr unsigned SEEDS = 5000;

class ScannedTree : public testing::Test {
protected:
    XmlDoc scanned(const std::string& document) const {
        return scanTree(TextSource(document), "", endMark_, ANY_NUMBER_OF_NODES);
    }
    XmlDoc scannedByPieces(const std::string& document, size_t windowSize) const {
        return scanTree(TextSource(document), "", endMark_, ANY_NUMBER_OF_NODES,
                        KeptAttributes::ALL, windowSize);
    }
    XmlDoc scannedWithoutAttributes(const std::string& document) const {
        return scanTree(TextSource(document), "", endMark_, ANY_NUMBER_OF_NODES,
                        KeptAttributes::NONE);
    }
    XmlDoc parsed(const std::string& document) const {
        return parseXml(TextSource(document), endMark_).document;
    }

    EndMark endMark_;
};

TEST_F(ScannedTree, IsTheOneOfTheParser) {
    unsigned scannedOnes = 0;
    for (unsigned seed = 0; seed < SEEDS; ++seed) {
        RandomXml chance(seed);
        const std::string document = chance.perhapsSpoilt(chance.document());
        const XmlDoc tree = scanned(document);
        if (tree == nullptr) {
            continue;
        }
        ++scannedOnes;
        const XmlDoc expected = parsed(document);
        ASSERT_NE(expected, nullptr) << document;
        ASSERT_EQ(treeText(tree.get()), treeText(expected.get())) << document;
        const XmlDoc ofPieces = scannedByPieces(document, 1 + chance.upTo(40));
        ASSERT_NE(ofPieces, nullptr) << document;
        ASSERT_EQ(treeText(ofPieces.get()), treeText(expected.get())) << document;
    }
    EXPECT_GT(scannedOnes, SEEDS / 4);
}

TEST_F(ScannedTree, IsTheSameButForAttributesThatAreUnwanted) {
    for (unsigned seed = 0; seed < SEEDS; ++seed) {
        RandomXml chance(seed);
        const std::string document = chance.perhapsSpoilt(chance.document());
        const XmlDoc expected = scanned(document);
        const XmlDoc tree = scannedWithoutAttributes(document);
        ASSERT_EQ(tree == nullptr, expected == nullptr) << document;
        if (tree != nullptr) {
            removeAttributes(expected.get());
            ASSERT_EQ(treeText(tree.get()), treeText(expected.get())) << document;
        }
    }
}

TEST_F(ScannedTree, CountsAttributesThatAreUnwanted) {
    const TextSource document("<a b='' c=''/>");
    EXPECT_EQ(scanTree(document, "", endMark_, 4, KeptAttributes::NONE), nullptr);
    EXPECT_NE(scanTree(document, "", endMark_, 5, KeptAttributes::NONE), nullptr);
}

TEST_F(ScannedTree, IsThereForWhateverThePlainDocumentsHold) {
    for (const char* const document :
         {"<a/>", "<?xml version='1.0'?>\r\n<!--c--><p:a xmlns:p='urn:p' p:b='&lt;'/><?q r?>",
          "<a xml:space='preserve'> <![CDATA[ ]]>\r\n</a>"}) {
        EXPECT_NE(scanned(document), nullptr) << document;
    }
}

TEST_F(ScannedTree, IsNoneOfWhatIsForTheParser) {
    EXPECT_EQ(scanned("<a>"), nullptr);
    EXPECT_EQ(scanned("<!DOCTYPE a><a/>"), nullptr);
    EXPECT_EQ(scanTree(TextSource("<a/>"), "latin1", endMark_, ANY_NUMBER_OF_NODES), nullptr);
    EXPECT_EQ(scanned("<a xml:id='x'/>"), nullptr);
    EXPECT_EQ(scanned("<a xml:space='keep'/>"), nullptr);
    EXPECT_EQ(scanned("<a xmlns='u&amp;v'/>"), nullptr);
    EXPECT_EQ(scanned("<a xmlns:xml='urn:x'/>"), nullptr);
    EXPECT_EQ(scanned("<a xmlns:p='http://www.w3.org/2000/xmlns/'/>"), nullptr);
    EXPECT_EQ(scanned("<a xmlns:p='urn:x' xmlns:q='urn:x' p:b='' q:b=''/>"), nullptr);
    EXPECT_EQ(scanned("<a/><?" + std::string(10'001, 'n') + "?>"), nullptr);
    EXPECT_EQ(scanTree(TextSource("<a><b/></a>"), "", endMark_, 1), nullptr);
    for (const char* const leaf : {"t<b/>", "<![CDATA[t]]>", "<!--c-->", "<?i?>"}) {
        const std::string document = "<a>" + std::string(leaf) + leaf + "</a>";
        EXPECT_EQ(scanTree(TextSource(document), "", endMark_, 2), nullptr) << leaf;
    }
    EndMark set;
    set.set();
    EXPECT_EQ(scanTree(TextSource("<a/>"), "", set, ANY_NUMBER_OF_NODES), nullptr);
}

}  // namespace

}  // namespace intake
