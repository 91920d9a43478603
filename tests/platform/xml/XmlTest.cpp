#include "tests/platform/xml/XmlTest.h"

namespace intake {

void XmlTest::load(std::string_view text) {
    EXPECT_TRUE(document_->loadText(text)) << document_->parseErrorReason();
}

bool XmlTest::loadFile(const std::string& bytes) {
    return document_->loadFile(directory_.write("file.xml", bytes));
}

std::string XmlTest::texts(const std::string& expression) {
    return join(expression, &XmlDocument::appendText);
}

std::string XmlTest::names(const std::string& expression) {
    return join(expression, &XmlDocument::appendName);
}

std::string XmlTest::markup(const std::string& expression) {
    return join(expression, &XmlDocument::appendMarkup);
}

size_t XmlTest::count(const std::string& expression) {
    EXPECT_TRUE(document_->selectNodes(expression));
    return document_->selectedCount();
}

std::string XmlTest::children(const std::string& expression) {
    EXPECT_EQ(count(expression), 1U);
    std::string all;
    document_->forEachChild(document_->selected(0), [&](Node child) {
        document_->appendName(child, all);
        all += "=";
        document_->appendText(child, all);
        all += "|";
    });
    return all;
}

std::string XmlTest::join(const std::string& expression, Append append) {
    std::string all;
    for (size_t i = 0, nodes = count(expression); i < nodes; ++i) {
        ((*document_).*append)(document_->selected(i), all);
        all += "|";
    }
    return all;
}

}  // namespace intake
