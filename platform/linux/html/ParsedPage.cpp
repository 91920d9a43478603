#include "platform/linux/html/ParsedPage.h"

#include "platform/linux/html/inner_text.h"

namespace intake::html {

namespace {

const Node& nodeOf(HtmlDocument::Element element) {
    return *static_cast<const Node*>(element);
}

HtmlDocument::Element toElement(const Node* node) {
    return const_cast<Node*>(node);  // the caller sees no node, only a handle
}

}  // namespace

template <class Condition>
HtmlDocument::Element ParsedPage::first(const Node& root, Condition condition) {
    const Node* node = root.following(&root);
    while (node != nullptr && !(node->type == NodeType::ELEMENT && condition(*node))) {
        node = node->following(&root);
    }
    return toElement(node);
}

HtmlDocument::Element ParsedPage::elementById(const std::string& id) {
    return first(page_->document, [&](const Node& node) {
        const std::string_view* const value = node.attribute("id");
        return value != nullptr && !value->empty() && *value == id;
    });
}

bool ParsedPage::isTable(Element element) {
    return nodeOf(element).isHtml(Tag::TABLE);
}

HtmlDocument::Element ParsedPage::firstTable(Element ancestor) {
    return first(ancestor == nullptr ? page_->document : nodeOf(ancestor),
                 [](const Node& node) { return node.isHtml(Tag::TABLE); });
}

HtmlDocument::Element ParsedPage::parent(Element element) {
    const Node* const parent = nodeOf(element).parent;
    return parent != nullptr && parent->type == NodeType::ELEMENT ? toElement(parent) : nullptr;
}

HtmlDocument::Element ParsedPage::findElement(const Matches& matches) {
    return first(page_->document, [&](const Node& node) { return matches(toElement(&node)); });
}

bool ParsedPage::classNameEquals(Element element, std::string_view className) {
    const std::string_view* const value = nodeOf(element).attribute("class");
    return className == (value == nullptr ? std::string_view() : *value);
}

bool ParsedPage::innerTextEquals(Element element, std::string_view text) {
    return html::innerTextEquals(nodeOf(element), text);
}

std::unique_ptr<HtmlTable> ParsedPage::table(Element table) {
    return std::make_unique<ParsedTable>(nodeOf(table));
}

}  // namespace intake::html
