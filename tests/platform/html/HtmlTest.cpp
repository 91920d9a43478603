#include "tests/platform/html/HtmlTest.h"

#include <stdexcept>

namespace intake {

void HtmlTest::load(const std::string& page) {
    open(directory_.write("page.html", page));
}

void HtmlTest::open(const std::string& source) {
    std::string reason;
    document_ = services_.open(source, *connections_, endMark_, reason);
    if (document_ == nullptr) {
        throw std::runtime_error(source + " does not open: " + reason);
    }
    EXPECT_EQ(reason, "");
}

std::string HtmlTest::reasonOf(const std::string& source) {
    std::string reason;
    EXPECT_EQ(services_.open(source, *connections_, endMark_, reason), nullptr) << source;
    return reason;
}

std::string HtmlTest::cell() {
    const auto table = document_->table(document_->firstTable(nullptr));
    EXPECT_EQ(table->rowCount(), 1U);
    EXPECT_EQ(table->cellCount(0), 1U);
    std::string text;
    table->appendCellText(0, 0, text);
    return text;
}

std::string HtmlTest::cellOf(const std::string& content) {
    load("<!DOCTYPE html><meta charset=utf-8><table><tr><td>" + content + "</td></tr></table>");
    return cell();
}

std::string HtmlTest::table(Element element) {
    const auto table = document_->table(element);
    std::string all;
    for (size_t row = 0; row < table->rowCount(); ++row) {
        for (size_t cell = 0; cell < table->cellCount(row); ++cell) {
            table->appendCellText(row, cell, all);
            all += "|";
        }
        all += "\n";
    }
    return all;
}

}  // namespace intake
