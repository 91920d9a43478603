#pragma once

#include <libxml/tree.h>

#include <deque>
#include <string>
#include <string_view>

#include "formats/xml/XmlArena.h"
#include "formats/xml/XmlTag.h"

namespace intake {

/// The namespaces that hold where a document is being read. Those that elements outside of a tree
/// have declared stay for as long as these are open; those of a tree's elements are in its arena.
/// Belongs to one thread.
class NamespaceScopes {
public:
    /// Takes what an element at `depth` declares. Into `arena` go its declarations when it belongs
    /// to a tree, null when not. False when it is for the parser to judge.
    bool open(const XmlTag& tag, size_t depth, XmlArena* arena);

    /// Forgets what the element at `depth` has declared.
    void close(size_t depth) {
        if (!declared_.empty() && declared_.back().depth == depth) {
            closeDeclaring(depth);
        }
    }

    bool areEmpty() const { return declared_.empty(); }

    /// The namespace of a prefix, or the default one; null when there is none.
    const xmlNs* find(std::string_view prefix) const;

    /// What the element opened last has declared, first to last; null when nothing.
    xmlNs* declarations(size_t depth);

    /// The innermost open element outside of a tree, and around the one at `depth`, that has
    /// declared any; it stands for itself and those around it. Null when there is none.
    xmlNode* holderAround(size_t depth);

private:
    struct Declared {
        std::string prefix, uri;
        size_t depth;
        xmlNs own;
        xmlNs* space;  // which is `own`, or in an arena
    };
    struct Holder {
        xmlNode element;
        size_t depth;
    };

    static constexpr size_t MOST = 64;

    bool declare(const XmlTagAttribute& attribute, size_t depth, XmlArena* arena);
    void closeDeclaring(size_t depth);

    std::deque<Declared> declared_;  // which do not move
    std::deque<Holder> holders_;
};

}  // namespace intake
