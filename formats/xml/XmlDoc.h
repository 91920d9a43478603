#pragma once

#include <libxml/tree.h>

#include <memory>

#include "formats/xml/XmlArena.h"

namespace intake {

/// Frees a document: its nodes by the library, or with the arena that they lie in.
struct XmlDocDeleter {
    std::shared_ptr<XmlArena> arena;  // null where the nodes are the library's

    void operator()(xmlDoc* document) const {
        if (arena != nullptr) {
            document->children = document->last = nullptr;
        }
        xmlFreeDoc(document);
    }
};
using XmlDoc = std::unique_ptr<xmlDoc, XmlDocDeleter>;

/// Whether a document is to hold attributes; declarations of namespaces it holds in any case.
enum class KeptAttributes { ALL, NONE };

}  // namespace intake
