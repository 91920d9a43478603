#include "workbench/probe/PageTables.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <tuple>

#include "formats/html/inner_text.h"
#include "formats/text/trim.h"
#include "workbench/probe/NameList.h"

namespace probe {

namespace {

using intake::html::Node;
using intake::html::NodeType;
using intake::html::Page;
using intake::html::Tag;

constexpr std::string_view blanks = " \t\v\f";
constexpr int mostLevels = 10;                // above a table, in which a name for it is looked for
constexpr std::size_t mostTexts = 10;         // for each of which the whole page is searched
constexpr std::size_t longestSelector = 511;  // bytes, of the parameter

template <class Condition>
const Node* next(const Node* node, const Node& root, Condition condition) {
    do {
        node = node->following(&root);
    } while (node != nullptr && !(node->type == NodeType::ELEMENT && condition(*node)));
    return node;
}

bool isAny(const Node& /*node*/) {
    return true;
}

template <class Condition>
const Node* first(const Node& root, Condition condition) {
    return next(&root, root, condition);
}

bool isTable(const Node& node) {
    return node.isHtml(Tag::TABLE);
}

std::string_view valueOf(const Node& node, std::string_view attribute) {
    const std::string_view* const value = node.attribute(attribute);
    return value == nullptr ? std::string_view{} : *value;
}

const Node* parentElement(const Node& node) {
    return node.parent != nullptr && node.parent->type == NodeType::ELEMENT ? node.parent : nullptr;
}

bool isWithin(const Node* element, const Node& ancestor) {
    while (element != nullptr && element != &ancestor)
        element = parentElement(*element);
    return element != nullptr;
}

const Node* nearestTable(const Node* element) {
    for (element = parentElement(*element); element != nullptr; element = parentElement(*element)) {
        if (const Node* const table = first(*element, isTable)) return table;
    }
    return nullptr;
}

std::string textOf(const Node& element) {
    std::string text;
    intake::html::appendInnerText(element, text);
    return std::string(intake::trimmed(text, " \t\r\n"));
}

/// The parameter travels framed by bars, within which a backslash has a meaning.
bool arrives(const std::string& selector) {
    return selector.size() <= longestSelector &&
           selector.find_first_of("\r\n\\|") == std::string::npos;
}

bool isSectionHeading(const Node& node) {
    constexpr std::array headings{Tag::H1, Tag::H2, Tag::H3, Tag::H4, Tag::H5, Tag::H6};
    return std::any_of(headings.begin(), headings.end(), [&](Tag tag) { return node.isHtml(tag); });
}

bool isHeading(const Node& node) {
    return isSectionHeading(node) || node.isHtml(Tag::CAPTION) || node.isHtml(Tag::TH);
}

}  // namespace

HtmlSelector htmlSelector(std::string_view sheet) {
    std::istringstream in{std::string(sheet)};
    in.imbue(std::locale::classic());
    HtmlSelector selector;
    in >> selector.kind;
    std::getline(in, selector.text);
    if (selector.text.ends_with('\r')) selector.text.pop_back();
    selector.text.erase(0, selector.text.find_first_not_of(blanks));
    return selector;
}

PageTables::PageTables(const Page& page) : page_(page) {
    for (const Node* node = first(page.document, isAny); node != nullptr;
         node = next(node, page.document, isAny)) {
        ++byId_.try_emplace(valueOf(*node, "id"), Named{node, 0}).first->second.count;
        ++byClass_.try_emplace(valueOf(*node, "class"), Named{node, 0}).first->second.count;
        if (isTable(*node)) {
            positions_.emplace(node, landmarks_.size());
            tables_.push_back(node);
        }
        if (isTable(*node) || isSectionHeading(*node)) landmarks_.push_back(node);
    }
}

FoundTable PageTables::foundAt(const Node* element) {
    return {element == nullptr ? nullptr : nearestTable(element), element};
}

FoundTable PageTables::findByText(const std::string& text) {
    const intake::html::SearchedText searched{text, ++searches_};
    const auto hasText = [&](const Node& node) { return innerTextEquals(node, searched); };
    if (wordsOf(text).empty()) return foundAt(first(page_.document, hasText));
    if (!texts_) texts_.emplace(page_);
    for (const Node* element : texts_->elementsThatMayHave(text)) {
        if (hasText(*element)) return foundAt(element);
    }
    return {};
}

FoundTable PageTables::find(const HtmlSelector& selector) {
    if (selector.kind.empty()) return {tables_.empty() ? nullptr : tables_.front(), nullptr};
    if (selector.kind != "ID" && selector.kind != "CLASS") return findByText(selector.text);
    const bool byId = selector.kind == "ID";
    const auto& elements = byId ? byId_ : byClass_;
    const auto known = elements.find(selector.text);
    if (known == elements.end() || (byId && selector.text.empty())) return {};
    const Node* const element = known->second.first;
    if (byId && isTable(*element)) return {element, element};
    const Node* const inside = first(*element, isTable);
    return {inside == nullptr && isTable(*element) ? element : inside, element};
}

bool PageTables::canFind(const std::string& selector) {
    return arrives(selector) && find(htmlSelector(selector)).table != nullptr;
}

std::string PageTables::selectorMeantBy(const std::string& selector) {
    if (!canFind(selector)) return "";
    const FoundTable found = find(htmlSelector(selector));
    const bool isByText = selector.starts_with("TEXT ");
    if (!isByText || isWithin(found.element, *found.table)) return selector;
    const Node* const meant = next(found.element, page_.document, isTable);
    return meant == found.table || meant == nullptr ? selector : selectorFor(*meant);
}

bool PageTables::finds(const std::string& selector, const Node& table) {
    return arrives(selector) && find(htmlSelector(selector)).table == &table;
}

/// Whether an element holds no table but this one and those that stand in it.
bool PageTables::holdsOnly(const Node& element, const Node& table) const {
    const Node* other = first(element, isTable);
    while (other != nullptr && (other == &table || isWithin(other, table)))
        other = next(other, element, isTable);
    return other == nullptr;
}

std::vector<std::string> PageTables::selectorsFor(const Node& table) {
    std::vector<std::string> selectors;
    addNamed(table, selectors);
    if (tables_.front() == &table) selectors.emplace_back();
    addTexts(table, selectors);
    return selectors;
}

std::string PageTables::selectorFor(const Node& table) {
    std::vector<std::string> selectors;
    addNamed(table, selectors);
    if (selectors.empty() && tables_.front() != &table) addTexts(table, selectors);
    return selectors.empty() ? "" : selectors.front();
}

/// Those by an id or a class.
void PageTables::addNamed(const Node& table, std::vector<std::string>& selectors) {
    std::vector<std::string> others;
    int levels = 0;
    bool isAlone = true;  // what holds another table is held by what does so too
    for (const Node* node = &table; node != nullptr && levels < mostLevels;
         node = parentElement(*node), ++levels) {
        isAlone = isAlone && (node == &table || holdsOnly(*node, table));
        for (const auto& [kind, attribute, names] :
             {std::tuple("ID ", "id", &byId_), {"CLASS ", "class", &byClass_}}) {
            const std::string_view value = valueOf(*node, attribute);
            const std::string selector = kind + std::string(value);
            if (value.empty() || !finds(selector, table)) continue;
            const bool isTelling = isAlone && names->at(value).count == 1;
            (isTelling ? selectors : others).push_back(selector);
        }
    }
    selectors.insert(selectors.end(), others.begin(), others.end());
}

/// Those by the text of a heading above it or within it.
void PageTables::addTexts(const Node& table, std::vector<std::string>& selectors) {
    std::vector<std::string> texts = headingsAbove(table);
    for (const Node* heading = first(table, isHeading);
         heading != nullptr && texts.size() < mostTexts; heading = next(heading, table, isHeading))
        texts.push_back(textOf(*heading));
    for (const std::string& text : texts) {
        const std::string selector = "TEXT " + text;
        const bool isKnown =
            std::find(selectors.begin(), selectors.end(), selector) != selectors.end();
        if (!isKnown && finds(selector, table)) selectors.push_back(selector);
    }
}

/// Between the table before and this one, the nearest first.
std::vector<std::string> PageTables::headingsAbove(const Node& table) const {
    constexpr std::size_t most = 3;
    std::vector<std::string> texts;
    for (std::size_t i = positions_.at(&table); i > 0 && texts.size() < most; --i) {
        if (isTable(*landmarks_[i - 1])) break;
        texts.push_back(textOf(*landmarks_[i - 1]));
    }
    return texts;
}

std::string PageTables::headingOf(const Node& table) const {
    const Node* const caption =
        first(table, [](const Node& node) { return node.isHtml(Tag::CAPTION); });
    if (caption != nullptr) return textOf(*caption);
    const std::vector<std::string> above = headingsAbove(table);
    return above.empty() ? "" : above.front();
}

std::vector<std::string> PageTables::valuesAround(std::string_view attribute) const {
    NameList values;
    for (const Node* table : tables_) {
        for (const Node* node = table; node != nullptr; node = parentElement(*node)) {
            const std::string_view value = valueOf(*node, attribute);
            if (!value.empty()) values.add(value);
        }
    }
    return values.names();
}

std::vector<std::string> PageTables::headings() const {
    NameList texts;
    for (const Node* node = first(page_.document, isHeading); node != nullptr;
         node = next(node, page_.document, isHeading)) {
        const std::string text = textOf(*node);
        if (!text.empty()) texts.add(text);
    }
    return texts.names();
}

}  // namespace probe
