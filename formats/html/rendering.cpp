#include "formats/html/rendering.h"

#include <algorithm>
#include <array>

#include "formats/html/characters.h"
#include "formats/text/trim.h"

namespace intake::html {

namespace {

/// The SVG elements whose children are rendered, and those among them that render text.
constexpr std::array<std::string_view, 8> SVG_SHOWN{"a",      "foreignObject", "g",        "svg",
                                                    "switch", "text",          "textPath", "tspan"};
constexpr std::array<std::string_view, 5> SVG_TEXT{"a", "foreignObject", "text", "textPath",
                                                   "tspan"};

template <class Names>
bool isAmong(const Names& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The keyword that a style gives a property, by its last declaration; empty when it has none.
std::string_view keywordOf(std::string_view style, std::string_view property) {
    std::string_view keyword;
    while (!style.empty()) {
        const std::string_view declaration = style.substr(0, style.find(';'));
        style.remove_prefix(std::min(declaration.size() + 1, style.size()));
        const size_t colon = declaration.find(':');
        if (colon != std::string_view::npos &&
            equalIgnoringCase(trimmed(declaration.substr(0, colon), WHITE_SPACE), property)) {
            keyword = trimmed(declaration.substr(colon + 1), WHITE_SPACE);
            keyword =
                trimmed(keyword.substr(0, keyword.find('!')), WHITE_SPACE);  // of "!important"
        }
    }
    return keyword;
}

bool isKindRendered(const Node& element) {
    switch (element.space) {
        case Namespace::SVG:
            return isAmong(SVG_SHOWN, element.text);
        case Namespace::MATHML:
            return element.text != "annotation" && element.text != "annotation-xml";
        default:
            return !has(element.tag, HIDDEN) &&
                   (element.tag != Tag::DIALOG || element.attribute("open") != nullptr);
    }
}

bool isHiddenByAttribute(const Node& element) {
    const auto hides = [](const Attribute& each) {
        return each.name == "hidden" ||
               (each.name == "style" &&
                equalIgnoringCase(keywordOf(each.value, "display"), "none"));
    };
    for (const Attribute* each = element.attributes; each != nullptr; each = each->next) {
        if (hides(*each)) {
            return true;
        }
    }
    return false;
}

bool isFirstSummary(const Node& node) {
    if (!node.isHtml(Tag::SUMMARY)) {
        return false;
    }
    const Node* other = node.previous;
    while (other != nullptr && !other->isHtml(Tag::SUMMARY)) {
        other = other->previous;
    }
    return other == nullptr;
}

bool isFoldedAway(const Node& node) {
    return node.parent != nullptr && node.parent->isHtml(Tag::DETAILS) &&
           node.parent->attribute("open") == nullptr && !isFirstSummary(node);
}

bool isTextRendered(const Node& text) {
    return text.parent == nullptr || text.parent->space != Namespace::SVG ||
           isAmong(SVG_TEXT, text.parent->text);
}

}  // namespace

bool isRendered(const Node& node) {
    if (isFoldedAway(node)) {
        return false;
    }
    return node.type == NodeType::TEXT ? isTextRendered(node)
                                       : node.type == NodeType::ELEMENT && isKindRendered(node) &&
                                             !isHiddenByAttribute(node);
}

Visibility visibilityOf(const Node& element) {
    const std::string_view* const style = element.attribute("style");
    if (style == nullptr) {
        return Visibility::INHERITED;
    }
    const std::string_view keyword = keywordOf(*style, "visibility");
    if (equalIgnoringCase(keyword, "hidden") || equalIgnoringCase(keyword, "collapse")) {
        return Visibility::HIDDEN;
    }
    return equalIgnoringCase(keyword, "visible") || equalIgnoringCase(keyword, "initial")
               ? Visibility::VISIBLE
               : Visibility::INHERITED;
}

}  // namespace intake::html
