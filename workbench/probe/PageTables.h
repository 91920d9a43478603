#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "formats/html/Page.h"
#include "workbench/probe/TextIndex.h"

namespace probe {

/// How a table of a page is chosen: the first word of "Table/Sheet", and the rest.
struct HtmlSelector {
    std::string kind;  // ID, CLASS; any other word looks for a text; empty takes the first table
    std::string text;
};

HtmlSelector htmlSelector(std::string_view sheet);

/// What a selector leads to.
struct FoundTable {
    const intake::html::Node* table = nullptr;
    const intake::html::Node* element = nullptr;  // that has the id, the class or the text
};

/// The tables of a page, and how they are chosen. Borrows the page; belongs to one thread.
class PageTables {
public:
    explicit PageTables(const intake::html::Page& page);

    /// All of them, in order.
    const std::vector<const intake::html::Node*>& all() const { return tables_; }

    FoundTable find(const HtmlSelector& selector);

    /// Whether a selector arrives at the plugin as it stands, and finds a table.
    bool canFind(const std::string& selector);

    /// The selector, or another one where its text stands above another table than it finds. Empty
    /// when it finds none.
    std::string selectorMeantBy(const std::string& selector);

    /// The selectors that find just this table, the most telling one first: those of what holds no
    /// other table and is alone in its id or class, then the nearest. Without those that do not fit
    /// into the parameter; of the page's first table the last one but for texts is empty.
    std::vector<std::string> selectorsFor(const intake::html::Node& table);

    /// The first of these; empty when there is none.
    std::string selectorFor(const intake::html::Node& table);

    /// The tables and the headings of sections, in order.
    const std::vector<const intake::html::Node*>& landmarks() const { return landmarks_; }

    /// The text of the caption of a table, or of the heading above it; empty when there is none.
    std::string headingOf(const intake::html::Node& table) const;

    /// The values of an attribute of the tables and of what they stand in, each once.
    std::vector<std::string> valuesAround(std::string_view attribute) const;

    /// The texts of headings, captions and header cells, each once.
    std::vector<std::string> headings() const;

private:
    using Node = intake::html::Node;

    /// The elements of one id or class.
    struct Named {
        const Node* first;
        std::size_t count;
    };
    using Names = std::unordered_map<std::string_view, Named>;

    std::vector<std::string> headingsAbove(const Node& table) const;
    void addNamed(const Node& table, std::vector<std::string>& selectors);
    void addTexts(const Node& table, std::vector<std::string>& selectors);
    static FoundTable foundAt(const Node* element);
    FoundTable findByText(const std::string& text);
    bool finds(const std::string& selector, const Node& table);
    bool holdsOnly(const Node& element, const Node& table) const;

    const intake::html::Page& page_;
    Names byId_;
    Names byClass_;
    std::optional<TextIndex> texts_;                          // when it was needed
    std::vector<const Node*> landmarks_;                      // tables and headings of sections
    std::unordered_map<const Node*, std::size_t> positions_;  // of the tables among these
    std::vector<const Node*> tables_;
    uint32_t searches_ = 0;  // by text, each of which has a number of its own
};

}  // namespace probe
