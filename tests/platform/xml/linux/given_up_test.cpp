// Documents that are not read to their end: they would take hours, or nobody waits for them.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlGivenUp = XmlTest;

constexpr uint32_t ABORTED = 0x80004004;
constexpr int MANY = 100'000;

std::string elementWith(const std::string& attribute, int times) {
    std::string text = "<a";
    for (int i = 0; i < times; ++i) {
        text += " " + attribute + std::to_string(i) + "='v'";
    }
    return text + "/>";
}

TEST_F(XmlGivenUp, AnElementMayHave5000AttributesOrNamespaces) {
    EXPECT_TRUE(document_->loadText(elementWith("n", 5000))) << document_->parseErrorReason();
    EXPECT_TRUE(document_->loadText(elementWith("xmlns:n", 5000))) << document_->parseErrorReason();
}

TEST_F(XmlGivenUp, AnElementOfFarTooManyAttributesIsRefused) {
    for (const char* const attribute : {"n", "xmlns:n"}) {
        EXPECT_FALSE(document_->loadText(elementWith(attribute, MANY)));
        EXPECT_TRUE(document_->parseErrorReason().starts_with(
            "An element has more than 5000 attributes or namespaces (line 1, column "))
            << document_->parseErrorReason();
        EXPECT_FALSE(loadFile(elementWith(attribute, MANY)));
        EXPECT_TRUE(document_->parseErrorReason().starts_with(
            "An element has more than 5000 attributes or namespaces (line 1, column "))
            << document_->parseErrorReason();
    }
}

TEST_F(XmlGivenUp, FarTooManyNamespacesInsideEachOtherAreRefused) {
    std::string text;
    for (int i = 0; i < MANY; ++i) {
        text += "<a xmlns:n" + std::to_string(i) + "='v'>";
    }
    EXPECT_FALSE(document_->loadText(text));
    EXPECT_TRUE(document_->parseErrorReason().starts_with(
        "An element has more than 5000 attributes or namespaces (line 1, column "))
        << document_->parseErrorReason();
}

TEST_F(XmlGivenUp, AttributesOfManyElementsDoNotAddUp) {
    std::string text = "<r>";
    for (int i = 0; i < 20; ++i) {
        text += elementWith("n", 1000) + elementWith("xmlns:n", 1000);
    }
    load(text + "</r>");
    EXPECT_EQ(count("//@*"), 20'000U);
}

TEST_F(XmlGivenUp, NothingIsLoadedForNobody) {
    endMark_.set();
    EXPECT_FALSE(document_->loadText("<a/>"));
    EXPECT_TRUE(document_->parseErrorReason().starts_with("The load was given up"));
    EXPECT_FALSE(loadFile("<a/>"));
    EXPECT_TRUE(document_->parseErrorReason().starts_with("The load was given up"));
    EXPECT_EQ(document_->rootElement(), nullptr);
}

TEST_F(XmlGivenUp, NothingIsSelectedForNobody) {
    load("<a><k>1</k></a>");
    document_->setKeyExpression("k");
    ASSERT_EQ(count("/a"), 1U);
    const XmlDocument::Node row = document_->selected(0);
    endMark_.set();
    std::string key;
    EXPECT_EQ(errorOf([&] { document_->selected(0); }).code(), ABORTED);
    EXPECT_EQ(errorOf([&] { document_->appendKeyText(row, key); }).code(), ABORTED);
    EXPECT_EQ(errorOf([&] { document_->selectNodes("/a"); }).code(), ABORTED);
    EXPECT_EQ(key, "");
}

}  // namespace

}  // namespace intake
