// Documents and expressions that would exhaust something.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlLarge = XmlTest;

constexpr int DEPTH = 1'000'000;

std::string repeat(const char* text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

TEST_F(XmlLarge, AMillionNestedElementsAreLoadedSelectedWrittenAndFreed) {
    const std::string nested = repeat("<x>", DEPTH) + "deep" + repeat("</x>", DEPTH);
    load(nested);
    EXPECT_EQ(texts("/x"), "deep|");
    EXPECT_EQ(texts("(//x)[last()]"), "deep|");
    EXPECT_EQ(count("//x[last()]"), static_cast<size_t>(DEPTH));
    EXPECT_TRUE(markup("/x") == nested + "|");
    EXPECT_EQ(texts("//x[not(x) and . = 'deep']"), "deep|");
}

TEST_F(XmlLarge, AMillionNestedElementsAreReplacedByAText) {
    load(repeat("<x>", DEPTH) + repeat("</x>", DEPTH));
    document_->setText(document_->rootElement(), "flat");
    EXPECT_EQ(markup("/x"), "<x>flat</x>|");
}

TEST_F(XmlLarge, AMillionNestedElementsThatNeverEndAreRefused) {
    EXPECT_FALSE(document_->loadText(repeat("<x>", DEPTH)));
    EXPECT_NE(document_->parseErrorReason(), "");
}

TEST_F(XmlLarge, FiveThousandAttributesAreRead) {
    constexpr int ATTRIBUTES = 5000;
    std::string text = "<a";
    for (int i = 0; i < ATTRIBUTES; ++i) {
        text += " n" + std::to_string(i) + "='" + std::to_string(i) + "'";
    }
    load(text + "/>");
    EXPECT_EQ(count("/a/@*"), static_cast<size_t>(ATTRIBUTES));
    EXPECT_EQ(texts("/a/@n4999"), "4999|");
}

TEST_F(XmlLarge, AnExpressionThatExplodesIsGivenUp) {
    load("<r>" + repeat("<e/>", 3000) + "</r>");
    const PlatformError error =
        errorOf([&] { document_->selectNodes("//e[count(//e[count(//e) > 0]) > 0]"); });
    EXPECT_EQ(error.code(), 0x80004005);
}

}  // namespace

}  // namespace intake
