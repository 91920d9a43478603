// How nodes are called, and of what kind they are.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlName = XmlTest;

TEST_F(XmlName, ElementsAndAttributesKeepTheirPrefix) {
    load("<p:a xmlns:p=\"urn:p\" p:b=\"1\" c=\"2\"/>");
    EXPECT_EQ(names("/* | /*/@*"), "p:a|p:b|c|");
}

TEST_F(XmlName, WhatHasNoNameOfItsOwnHasAFixedOne) {
    load("<a>1<![CDATA[2]]><!--3--><?four 5?></a>");
    EXPECT_EQ(names("/a/node()"), "#text|#cdata-section|#comment|four|");
    EXPECT_EQ(names("/"), "#document|");
}

TEST_F(XmlName, NamesBeyondAsciiAreUtf8) {
    load("<größe/>");
    EXPECT_EQ(names("/*"), "größe|");
}

TEST_F(XmlName, OnlyElementsAreElements) {
    load("<a>1<!--2--><b/></a>");
    std::string kinds;
    ASSERT_EQ(count("/a/node() | /a"), 4U);
    for (size_t i = 0; i < 4; ++i) {
        kinds += document_->isElement(document_->selected(i)) ? 'e' : '-';
    }
    EXPECT_EQ(kinds, "e--e");
}

TEST_F(XmlName, TextAndCommentsAreNoElementsOfANode) {
    load("<a><b>1<!--2--></b><c>1<d/></c></a>");
    ASSERT_EQ(count("/a/*"), 2U);
    EXPECT_FALSE(document_->hasElements(document_->selected(0)));
    EXPECT_TRUE(document_->hasElements(document_->selected(1)));
}

TEST_F(XmlName, AnAttributeIsFoundByItsQualifiedName) {
    load("<a xmlns:p=\"urn:p\" p:name=\"1\" name=\"2\"/>");
    std::string value;
    EXPECT_TRUE(document_->attribute(document_->rootElement(), "name", value));
    EXPECT_EQ(value, "2");
    EXPECT_TRUE(document_->attribute(document_->rootElement(), "p:name", value));
    EXPECT_EQ(value, "1");
    EXPECT_FALSE(document_->attribute(document_->rootElement(), "Name", value));
}

}  // namespace

}  // namespace intake
