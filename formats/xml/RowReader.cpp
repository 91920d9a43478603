#include "formats/xml/RowReader.h"

#include <algorithm>

#include "formats/xml/xml_text.h"

namespace intake {

namespace {

std::string_view uriOf(const xmlNs* space) {
    return space == nullptr ? std::string_view() : viewOf(space->href);
}

/// An element as its tag tells of it.
class TagElement {
public:
    TagElement(const XmlTag& tag, const ScannedElements& elements)
        : tag_(tag), elements_(elements) {}

    std::string_view name() const { return tag_.name.local(); }
    std::string_view uri() const { return uriOf(elements_.space()); }

    template <class Holds>
    bool anyAttribute(const NameTest& test, Holds holds) const {
        for (const XmlTagAttribute& each : tag_.attributes) {
            if (matches(each, test) && holds(each.value)) {
                return true;
            }
        }
        return false;
    }

    bool matches(const XmlTagAttribute& attribute, const NameTest& test) const {
        return !attribute.isDeclaration() &&
               test.matches(attribute.name.local(), uriOf(elements_.spaceOf(attribute)));
    }

private:
    const XmlTag& tag_;
    const ScannedElements& elements_;
};

}  // namespace

RowReader::RowReader(const XmlRowQuery& query, const Tell& tell, uint64_t mostNodes)
    : query_(query),
      tell_(tell),
      isLate_(query.path.isLate()),
      needsAttributes_(query.needsMarkup || isLate_ ||
                       (query.key && query.key->looksAtAttributes())),
      looksInside_(isLate_ || (query.key && !query.key->isSelf())),
      tree_(arena_),
      elements_(mostNodes),
      match_(query.path) {}

bool RowReader::startElement(const XmlTag& tag) {
    // What a row itself declares is not in the arena: it must be known before the row is.
    if (!elements_.enter(tag, isBuilding() ? &arena_ : nullptr)) {
        return false;
    }
    if (match_.enter(TagElement(tag, elements_))) {
        addRow(isLate_ || isWanted(found_ + static_cast<int64_t>(rows_.size())));
    }
    if (isBuilding()) {
        buildElement(tag);
    }
    if (match_.findsAttributes()) {
        tellAttributes(tag);
    }
    return true;
}

void RowReader::addRow(bool isBuilt) {
    if (!isBuilt && !isBuilding()) {
        ++found_;
        return;
    }
    rows_.push_back({nullptr, isBuilt ? elements_.depth() : 0, true});
    if (!isBuilt) {
        return;
    }
    open_.push_back(rows_.size() - 1);
    if (!isBuilding()) {
        rowDepth_ = elements_.depth();
        nodesBefore_ = elements_.nodes();
        tree_.begin(nullptr, nullptr);
    }
}

void RowReader::buildElement(const XmlTag& tag) {
    xmlNode* const element = elements_.addTo(tree_, tag, needsAttributes_);
    if (elements_.depth() == rowDepth_) {
        element->parent = elements_.holderAround();
    }
    if (!open_.empty() && rows_[open_.back()].depth == elements_.depth()) {
        rows_[open_.back()].node = element;
    }
}

void RowReader::tellAttributes(const XmlTag& tag) {
    const TagElement element(tag, elements_);
    for (const XmlTagAttribute& each : tag.attributes) {
        if (element.matches(each, query_.path.steps.back().test)) {
            tellLoose([&] {
                return reinterpret_cast<xmlNode*>(tree_.addAttribute(
                    nullptr, nullptr, each.name.local(), elements_.spaceOf(each), each.value));
            });
        }
    }
}

/// Tells of a node that is no element, which no tree is built for.
template <class Make>
void RowReader::tellLoose(Make make) {
    if (isWanted(found_)) {
        tree_.begin(nullptr, nullptr);
        tell_(make());
        arena_.reset();
    }
    ++found_;
}

void RowReader::endElement() {
    if (isBuilding()) {
        if (!open_.empty() && rows_[open_.back()].depth == elements_.depth()) {
            Row& row = rows_[open_.back()];
            row.isFound = !isLate_ || match_.holdsLate(row.node);
            row.depth = 0;
            open_.pop_back();
        }
        tree_.close();
        if (elements_.depth() == rowDepth_) {
            endRows();
        }
    }
    match_.leave();
    elements_.leave();
}

void RowReader::endRows() {
    for (const Row& row : rows_) {
        if (row.isFound && isWanted(found_++) && row.node != nullptr) {
            tell_(row.node);
        }
    }
    if (looksInside_) {
        largestRow_ = std::max(largestRow_, elements_.nodes() - nodesBefore_);
    }
    rows_.clear();
    rowDepth_ = 0;
    arena_.reset();
}

/// Two slashes collect elements of any name; a step collects those of its name from one element
/// before it judges them. Within a row, anything may be collected.
uint64_t RowReader::mostAtATime() const {
    const uint64_t ofSteps = query_.path.isDeep() ? elements_.elements() : match_.mostNamed();
    return std::max({ofSteps, largestRow_, static_cast<uint64_t>(found_)});
}

xmlNode* RowReader::makeText(std::string_view text) {
    xmlNode* const made = tree_.addText(text);
    if (elements_.preservesSpace()) {
        keepSpace(made);
    }
    return made;
}

void RowReader::text(std::string_view text) {
    elements_.addLeaf();
    if ((!isBuilding() && !match_.findsTexts()) || elements_.leavesOut(text)) {
        return;
    }
    if (isBuilding()) {
        makeText(text);
    } else {
        tellLoose([&] { return makeText(text); });
    }
}

void RowReader::section(std::string_view text) {
    elements_.addLeaf();
    if (isBuilding()) {
        tree_.addSection(text);
    } else if (match_.findsTexts()) {
        tellLoose([&] { return tree_.addSection(text); });
    }
}

void RowReader::comment(std::string_view text) {
    elements_.addLeaf();
    if (isBuilding()) {
        tree_.addComment(text);
    }
}

void RowReader::instruction(std::string_view target, const std::string_view* data) {
    elements_.addLeaf();
    if (isBuilding()) {
        tree_.addInstruction(target, data);
    }
}

}  // namespace intake
