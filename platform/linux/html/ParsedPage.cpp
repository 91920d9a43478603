#include "platform/linux/html/ParsedPage.h"

#include "platform/linux/base/com_failures.h"

namespace intake::html {

namespace {

const Node& nodeOf(HtmlDocument::Element element) {
    return *static_cast<const Node*>(element);
}

HtmlDocument::Element toElement(const Node* node) {
    return const_cast<Node*>(node);  // the caller sees no node, only a handle
}

}  // namespace

/// The first element below a root that meets a condition. Nothing inside of `withoutAny` does, so
/// that is passed over.
template <class Condition>
const Node* ParsedPage::first(const Node& root, Condition condition, const Node* withoutAny) {
    const Node* node = root.following(&root);
    while (node != nullptr && !(node->type == NodeType::ELEMENT && condition(*node))) {
        raiseIfEnded(endMark_, PARSER_NAME);
        node = node == withoutAny ? node->followingOutside(&root) : node->following(&root);
    }
    return node;
}

HtmlDocument::Element ParsedPage::elementById(const std::string& id) {
    return toElement(first(page_->document, [&](const Node& node) {
        const std::string_view* const value = node.attribute("id");
        return value != nullptr && !value->empty() && *value == id;
    }));
}

bool ParsedPage::isTable(Element element) {
    return nodeOf(element).isHtml(Tag::TABLE);
}

/// A search by text asks for one ancestor after the other: what was searched in vain for the last
/// one is passed over in the next.
HtmlDocument::Element ParsedPage::firstTable(Element ancestor) {
    const Node& root = ancestor == nullptr ? page_->document : nodeOf(ancestor);
    const auto isTable = [](const Node& node) { return node.isHtml(Tag::TABLE); };
    const Node* const table = first(root, isTable, rootWithoutTable_);
    rootWithoutTable_ = table == nullptr ? &root : rootWithoutTable_;
    return toElement(table);
}

HtmlDocument::Element ParsedPage::parent(Element element) {
    const Node* const parent = nodeOf(element).parent;
    return parent != nullptr && parent->type == NodeType::ELEMENT ? toElement(parent) : nullptr;
}

HtmlDocument::Element ParsedPage::findElement(const Matches& matches) {
    return toElement(
        first(page_->document, [&](const Node& node) { return matches(toElement(&node)); }));
}

bool ParsedPage::classNameEquals(Element element, std::string_view className) {
    const std::string_view* const value = nodeOf(element).attribute("class");
    return className == (value == nullptr ? std::string_view() : *value);
}

bool ParsedPage::innerTextEquals(Element element, std::string_view text) {
    if (searched_.number == 0 || searched_.text != text) {
        searched_ = {std::string(text), searched_.number + 1};
    }
    return html::innerTextEquals(nodeOf(element), searched_);
}

std::unique_ptr<HtmlTable> ParsedPage::table(Element table) {
    return std::make_unique<ParsedTable>(nodeOf(table), endMark_);
}

size_t ParsedTable::cellCount(size_t row) {
    raiseIfEnded(endMark_, PARSER_NAME);
    return rows_.cellCount(row);
}

}  // namespace intake::html
