#include "formats/html/rendering.h"

#include <algorithm>
#include <array>
#include <string>

#include "formats/html/characters.h"
#include "formats/html/inline_style.h"

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

/// Where browsers never render a form: as a part of a table, between its cells or rows.
bool isFormInTable(const Node& element) {
    return element.tag == Tag::FORM && element.parent != nullptr &&
           element.parent->space == Namespace::HTML && has(element.parent->tag, TABLE_PART);
}

bool isKindRendered(const Node& element) {
    switch (element.space) {
        case Namespace::SVG:
            return isAmong(SVG_SHOWN, element.text);
        case Namespace::MATHML:
            return element.text != "annotation" && element.text != "annotation-xml";
        default:
            return !has(element.tag, HIDDEN) && !isFormInTable(element) &&
                   (element.tag != Tag::DIALOG || element.attribute("open") != nullptr);
    }
}

/// A style of its own counts before the attributes.
bool isHiddenByAttribute(const Node& element) {
    bool isHidden = false;
    for (const Attribute* each = element.attributes; each != nullptr; each = each->next) {
        if (each->name == "style") {
            const std::string display = keywordOf(each->value, "display");
            if (!display.empty()) {
                return equalIgnoringCase(display, "none");
            }
        }
        isHidden = isHidden || each->name == "hidden" || each->name == "popover";
    }
    return isHidden;
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
    if (text.parent == nullptr) {
        return true;
    }
    return text.parent->space == Namespace::SVG
               ? isAmong(SVG_TEXT, text.parent->text)
               : !text.parent->isHtml(Tag::SELECT) && !text.parent->isHtml(Tag::OPTGROUP);
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
    const std::string keyword = keywordOf(*style, "visibility");
    if (equalIgnoringCase(keyword, "hidden") || equalIgnoringCase(keyword, "collapse")) {
        return Visibility::HIDDEN;
    }
    return equalIgnoringCase(keyword, "visible") || equalIgnoringCase(keyword, "initial")
               ? Visibility::VISIBLE
               : Visibility::INHERITED;
}

}  // namespace intake::html
