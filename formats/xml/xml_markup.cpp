#include "formats/xml/xml_markup.h"

#include <string_view>
#include <vector>

#include "formats/xml/xml_text.h"

namespace intake {

namespace {

constexpr const char* TEXT_SPECIALS = "&<>\r";
constexpr const char* ATTRIBUTE_SPECIALS = "&<>\"\t\n\r";

const char* reference(char special) {
    switch (special) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\t':
            return "&#9;";
        case '\n':
            return "&#10;";
        default:
            return "&#13;";
    }
}

void appendEscaped(std::string_view text, const char* specials, std::string& out) {
    for (;;) {
        const size_t special = text.find_first_of(specials);
        out.append(text.substr(0, special));
        if (special == std::string_view::npos) {
            return;
        }
        out.append(reference(text[special]));
        text.remove_prefix(special + 1);
    }
}

void appendDeclaration(const xmlNs* space, std::string& out) {
    appendNodeName(reinterpret_cast<const xmlNode*>(space), out);
    out.append("=\"");
    appendEscaped(viewOf(space->href), ATTRIBUTE_SPECIALS, out);
    out.append("\"");
}

void appendAttribute(const xmlAttr* attribute, std::string& out) {
    appendNodeName(reinterpret_cast<const xmlNode*>(attribute), out);
    out.append("=\"");
    for (const xmlNode* part = attribute->children; part != nullptr; part = part->next) {
        appendEscaped(viewOf(part->content), ATTRIBUTE_SPECIALS, out);
    }
    out.append("\"");
}

void appendInstruction(const xmlNode* node, std::string& out) {
    out.append("<?").append(viewOf(node->name));
    if (node->content != nullptr) {
        out.append(" ").append(viewOf(node->content));
    }
    out.append("?>");
}

void appendLeaf(const xmlNode* node, std::string& out) {
    switch (node->type) {
        case XML_TEXT_NODE:
            return appendEscaped(viewOf(node->content), TEXT_SPECIALS, out);
        case XML_CDATA_SECTION_NODE:
            out.append("<![CDATA[").append(viewOf(node->content)).append("]]>");
            return;
        case XML_COMMENT_NODE:
            out.append("<!--").append(viewOf(node->content)).append("-->");
            return;
        case XML_PI_NODE:
            return appendInstruction(node, out);
        default:
            return;
    }
}

/// Writes an element or a document with all below it.
class MarkupWriter {
public:
    MarkupWriter(const xmlNode* top, std::string& out) : top_(top), out_(out) {
        for (const xmlNode* outer = top->parent;
             outer != nullptr && outer->type == XML_ELEMENT_NODE; outer = outer->parent) {
            for (const xmlNs* space = outer->nsDef; space != nullptr; space = space->next) {
                inherited_.push_back({space, nullptr});
            }
        }
    }

    void write() {
        const xmlNode* node = top_;
        while (node != nullptr) {
            open(node);
            node = isBranch(node) && node->children != nullptr ? node->children : close(node);
        }
    }

private:
    struct Inherited {
        const xmlNs* space;
        const xmlNode* declaredBy;  // the open element that has declared it anew; null when none
    };

    static bool isBranch(const xmlNode* node) {
        return node->type == XML_ELEMENT_NODE || node->type == XML_DOCUMENT_NODE;
    }

    void open(const xmlNode* node) {
        if (node->type == XML_ELEMENT_NODE) {
            openElement(node);
        } else {
            appendLeaf(node, out_);
        }
    }

    /// Ends all elements that end behind `node`; returns the node that comes next, or null.
    const xmlNode* close(const xmlNode* node) {
        while (node != top_ && node->next == nullptr) {
            node = node->parent;
            closeElement(node);
        }
        return node == top_ ? nullptr : node->next;
    }

    void openElement(const xmlNode* element) {
        out_.append("<");
        appendNodeName(element, out_);
        for (const xmlNs* space = element->nsDef; space != nullptr; space = space->next) {
            out_.append(" ");
            appendDeclaration(space, out_);
        }
        declareInherited(element->ns, element);
        for (const xmlAttr* each = element->properties; each != nullptr; each = each->next) {
            declareInherited(each->ns, element);
            out_.append(" ");
            appendAttribute(each, out_);
        }
        out_.append(element->children == nullptr ? "/>" : ">");
        if (element->children == nullptr) {
            forgetDeclarations(element);
        }
    }

    void closeElement(const xmlNode* element) {
        if (element->type == XML_ELEMENT_NODE) {
            out_.append("</");
            appendNodeName(element, out_);
            out_.append(">");
            forgetDeclarations(element);
        }
    }

    void declareInherited(const xmlNs* used, const xmlNode* user) {
        for (Inherited& each : inherited_) {
            if (each.space == used && each.declaredBy == nullptr) {
                out_.append(" ");
                appendDeclaration(used, out_);
                each.declaredBy = user;
            }
        }
    }

    void forgetDeclarations(const xmlNode* element) {
        for (Inherited& each : inherited_) {
            each.declaredBy = each.declaredBy == element ? nullptr : each.declaredBy;
        }
    }

    const xmlNode* const top_;
    std::string& out_;
    std::vector<Inherited> inherited_;
};

}  // namespace

void appendNodeMarkup(const xmlNode* node, std::string& out) {
    switch (node->type) {
        case XML_ELEMENT_NODE:
        case XML_DOCUMENT_NODE:
            return MarkupWriter(node, out).write();
        case XML_ATTRIBUTE_NODE:
            return appendAttribute(reinterpret_cast<const xmlAttr*>(node), out);
        case XML_NAMESPACE_DECL:
            return appendDeclaration(reinterpret_cast<const xmlNs*>(node), out);
        default:
            return appendLeaf(node, out);
    }
}

}  // namespace intake
