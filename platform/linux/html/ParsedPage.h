#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "formats/html/Page.h"
#include "formats/html/TableRows.h"
#include "formats/html/inner_text.h"
#include "formats/source/EndMark.h"
#include "platform/HtmlDocument.h"

namespace intake::html {

/// What failures name as their source.
constexpr const char* PARSER_NAME = "HTML parser";

/// A page of our own parser as a document.
class ParsedPage final : public HtmlDocument {
public:
    /// `endMark` outlives this object. Searches throw PlatformError once it is set.
    ParsedPage(std::unique_ptr<Page> page, const EndMark& endMark)
        : page_(std::move(page)), endMark_(endMark) {}

    Element elementById(const std::string& id) override;
    bool isTable(Element element) override;
    Element firstTable(Element ancestor) override;
    Element parent(Element element) override;
    Element findElement(const Matches& matches) override;
    bool classNameEquals(Element element, std::string_view className) override;
    bool innerTextEquals(Element element, std::string_view text) override;
    std::unique_ptr<HtmlTable> table(Element table) override;

private:
    template <class Condition>
    const Node* first(const Node& root, Condition condition, const Node* withoutAny = nullptr);

    std::unique_ptr<Page> page_;
    const EndMark& endMark_;
    const Node* rootWithoutTable_ = nullptr;  // below it the last search for a table found none
    SearchedText searched_;
};

/// A table of such a page.
class ParsedTable final : public HtmlTable {
public:
    /// Both outlive this object. Asking for a row throws PlatformError once the mark is set.
    ParsedTable(const Node& table, const EndMark& endMark) : rows_(table), endMark_(endMark) {}

    size_t rowCount() override { return rows_.rowCount(); }
    size_t cellCount(size_t row) override;
    void appendCellText(size_t row, size_t cell, std::string& out) override {
        rows_.appendCellText(row, cell, out);
    }
    void appendCellKey(size_t row, size_t cell, std::string& out) override {
        rows_.appendCellText(row, cell, out);
    }

private:
    TableRows rows_;
    const EndMark& endMark_;
};

}  // namespace intake::html
