#include "tests/formats/xml/tree_text.h"

#include "formats/xml/xml_text.h"

namespace intake {

namespace {

void append(const xmlNs* space, std::string& out) {
    if (space != nullptr) {
        out.append("{").append(viewOf(space->prefix)).append("=").append(viewOf(space->href));
        out.append("}");
    }
}

/// Whether a namespace is one that an element around declares, which it is the same as.
void appendOrigin(const xmlNs* space, const xmlNode* element, std::string& out) {
    for (size_t level = 0; element->type == XML_ELEMENT_NODE; element = element->parent, ++level) {
        for (const xmlNs* each = element->nsDef; each != nullptr; each = each->next) {
            if (each == space) {
                out.append("^").append(std::to_string(level));
            }
        }
    }
}

void appendElement(const xmlNode* element, std::string& out) {
    append(element->ns, out);
    appendOrigin(element->ns, element, out);
    for (const xmlNs* each = element->nsDef; each != nullptr; each = each->next) {
        append(each, out.append(" declares "));
    }
    for (const xmlAttr* each = element->properties; each != nullptr; each = each->next) {
        append(each->ns, out.append(" ").append(viewOf(each->name)));
        appendOrigin(each->ns, element, out);
        out.append("=[");
        for (const xmlNode* part = each->children; part != nullptr; part = part->next) {
            out.append(viewOf(part->content));
        }
        out.append("]");
        out.append(each->parent == element && (each->prev == nullptr || each->prev->next == each)
                       ? ""
                       : " misplaced");
    }
}

void append(const xmlNode* node, std::string& out) {
    out.append(std::to_string(node->type)).append(" ").append(viewOf(node->name));
    if (node->type == XML_ELEMENT_NODE) {
        appendElement(node, out);
    } else {
        out.append(node->content == nullptr ? " none" : " [").append(viewOf(node->content));
        out.append(keepsSpace(node) ? "] kept" : "]");
    }
    const bool isInPlace =
        node->prev == nullptr ? node->parent->children == node : node->prev->next == node;
    const bool isLast = node->next != nullptr || node->parent->last == node;
    out.append(isInPlace && isLast ? "\n" : " misplaced\n");
}

/// In document order; null at the end.
xmlNode* nodeBehind(xmlNode* node) {
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
        return node->children;
    }
    while (node->next == nullptr && node->parent->type == XML_ELEMENT_NODE) {
        node = node->parent;
    }
    return node->next;
}

}  // namespace

void removeAttributes(xmlDoc* document) {
    for (xmlNode* node = document->children; node != nullptr; node = nodeBehind(node)) {
        if (node->type == XML_ELEMENT_NODE) {
            node->properties = nullptr;
        }
    }
}

std::string treeText(const xmlDoc* document) {
    std::string out;
    for (const xmlNode* node = document->children; node != nullptr;) {
        append(node, out);
        if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
            out.append("inside\n");
            node = node->children;
            continue;
        }
        while (node->next == nullptr && node->parent->type == XML_ELEMENT_NODE) {
            out.append("outside\n");
            node = node->parent;
        }
        node = node->next;
    }
    return out;
}

}  // namespace intake
