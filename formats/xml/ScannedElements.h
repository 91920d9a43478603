#pragma once

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "formats/xml/NamespaceScopes.h"
#include "formats/xml/XmlTag.h"
#include "formats/xml/XmlTree.h"

namespace intake {

/// The elements that are open where a document is being scanned: the namespaces that hold there,
/// whether white space counts, and how many nodes there were so far. Belongs to one thread.
class ScannedElements {
public:
    /// Refuses more nodes than `mostNodes`, and perhaps a few less.
    explicit ScannedElements(uint64_t mostNodes) : mostNodes_(mostNodes) {}

    /// Counts a node that is no element. Throws std::length_error for one too many.
    void addLeaf() {
        if (++nodes_ > mostNodes_) {
            throw std::length_error("The document has more nodes than are allowed");
        }
    }

    /// Enters an element. Into `arena` go its declarations when it belongs to a tree, null when
    /// not. False when the element is for the parser to judge.
    bool enter(const XmlTag& tag, XmlArena* arena);
    void leave();

    size_t depth() const { return preserves_.size(); }
    bool preservesSpace() const { return preserves_.back(); }

    /// Whether a text is left out: white space only, where that does not count.
    bool leavesOut(std::string_view text) const;

    /// The namespace of the element entered last; null when it is in none.
    const xmlNs* space() const { return space_; }

    /// The namespace of an attribute of that element.
    const xmlNs* spaceOf(const XmlTagAttribute& attribute) const;

    /// See NamespaceScopes; of the element entered last.
    xmlNode* holderAround() { return spaces_.holderAround(depth()); }

    /// Adds the element entered last to a tree.
    xmlNode* addTo(XmlTree& tree, const XmlTag& tag, bool withAttributes);

    /// No fewer than the nodes so far would be in a tree.
    uint64_t nodes() const { return nodes_; }
    uint64_t elements() const { return elements_; }

private:
    bool takeReserved(const XmlTag& tag);
    bool arePrefixesKnown(const XmlTag& tag) const;

    const uint64_t mostNodes_;
    NamespaceScopes spaces_;
    std::vector<bool> preserves_;  // white space, of each open element
    const xmlNs* space_ = nullptr;
    uint64_t nodes_ = 0;
    uint64_t elements_ = 0;
};

}  // namespace intake
