#include "formats/xml/ScannedElements.h"

#include "formats/text/trim.h"

namespace intake {

bool ScannedElements::enter(const XmlTag& tag, XmlArena* arena) {
    constexpr uint64_t NODES_OF_AN_ATTRIBUTE = 2;
    // Rows within rows are gone through for each of them; and far below, the library counts the
    // steps of some expressions that it does not count of others.
    constexpr size_t DEEPEST = 250;
    ++elements_;
    nodes_ += 1 + NODES_OF_AN_ATTRIBUTE * tag.attributes.size();
    preserves_.push_back(!preserves_.empty() && preserves_.back());
    if (depth() > DEEPEST || nodes_ > mostNodes_) {
        return false;
    }
    if (!tag.isPlain &&
        (!takeReserved(tag) || !spaces_.open(tag, depth(), arena) || !arePrefixesKnown(tag))) {
        return false;
    }
    const bool hasPrefix = tag.name.prefixLength != 0;
    space_ = hasPrefix || !spaces_.areEmpty() ? spaces_.find(tag.name.prefix()) : nullptr;
    return space_ != nullptr || !hasPrefix;
}

void ScannedElements::leave() {
    spaces_.close(depth());
    preserves_.pop_back();
}

bool ScannedElements::leavesOut(std::string_view text) const {
    return !preservesSpace() && text.find_first_not_of(XML_SPACE) == std::string_view::npos;
}

/// Takes what xml:space says; false when that is for the parser to judge. So is xml:id, by which it
/// keeps elements to be found.
bool ScannedElements::takeReserved(const XmlTag& tag) {
    for (const XmlTagAttribute& each : tag.attributes) {
        if (each.name.whole == "xml:id") {
            return false;
        }
        if (each.name.whole != "xml:space") {
            continue;
        }
        if (each.value != "preserve" && each.value != "default") {
            return false;
        }
        preserves_.back() = each.value == "preserve";
    }
    return true;
}

/// Whether all prefixes are declared, and no two attributes could be the same by their namespaces.
bool ScannedElements::arePrefixesKnown(const XmlTag& tag) const {
    for (const XmlTagAttribute& each : tag.attributes) {
        if (each.name.prefixLength == 0 || each.isDeclaration()) {
            continue;
        }
        if (spaces_.find(each.name.prefix()) == nullptr) {
            return false;
        }
        for (const XmlTagAttribute* other = &tag.attributes.front(); other != &each; ++other) {
            if (other->name.prefixLength != 0 && !other->isDeclaration() &&
                other->name.local() == each.name.local()) {
                return false;
            }
        }
    }
    return true;
}

/// The default namespace is none of attributes.
const xmlNs* ScannedElements::spaceOf(const XmlTagAttribute& attribute) const {
    return attribute.name.prefixLength == 0 ? nullptr : spaces_.find(attribute.name.prefix());
}

xmlNode* ScannedElements::addTo(XmlTree& tree, const XmlTag& tag, bool withAttributes) {
    xmlNs* const declarations = tag.isPlain ? nullptr : spaces_.declarations(depth());
    xmlNode* const element = tree.open(tag.name.local(), space_, declarations);
    xmlAttr* last = nullptr;
    for (const XmlTagAttribute& each :
         withAttributes ? tag.attributes : decltype(tag.attributes)()) {
        if (!each.isDeclaration()) {
            last = tree.addAttribute(element, last, each.name.local(), spaceOf(each), each.value);
        }
    }
    return element;
}

}  // namespace intake
