#include "formats/xml/xml_text.h"

#include "formats/text/trim.h"

namespace intake {

namespace {

/// Joins pieces of text and trims the whole, but no further than to a piece that is to be kept.
class TextJoiner {
public:
    explicit TextJoiner(std::string& out) : out_(out), start_(out.size()), keptEnd_(start_) {}

    void add(const xmlNode* leaf) {
        const std::string_view text = viewOf(leaf->content);
        if (leaf->type == XML_CDATA_SECTION_NODE || keepsSpace(leaf)) {
            out_.append(text);
            keptEnd_ = out_.size();
        } else {
            out_.append(out_.size() == start_ ? trimmedStart(text, XML_SPACE) : text);
        }
    }

    void trimWhole() {
        const std::string_view rest = std::string_view(out_).substr(keptEnd_);
        out_.resize(keptEnd_ + trimmedEnd(rest, XML_SPACE).size());
    }

private:
    std::string& out_;
    const size_t start_;
    size_t keptEnd_;
};

bool isText(const xmlNode* node) {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

/// The node behind `node` and all below it, within `top`; null at the end.
const xmlNode* following(const xmlNode* node, const xmlNode* top) {
    while (node != top && node->next == nullptr) {
        node = node->parent;
    }
    return node == top ? nullptr : node->next;
}

void appendJoinedText(const xmlNode* top, std::string& out) {
    TextJoiner joiner(out);
    for (const xmlNode* node = top; node != nullptr;) {
        if (isText(node)) {
            joiner.add(node);
        }
        const bool hasChildren =
            node->children != nullptr && (node == top || node->type == XML_ELEMENT_NODE);
        node = hasChildren ? node->children : following(node, top);
    }
    joiner.trimWhole();
}

/// An attribute's value is not trimmed.
void appendValue(const xmlNode* attribute, std::string& out) {
    for (const xmlNode* part = attribute->children; part != nullptr; part = part->next) {
        out.append(viewOf(part->content));
    }
}

void appendQualified(const xmlNs* space, const xmlChar* name, std::string& out) {
    if (space != nullptr && space->prefix != nullptr) {
        out.append(viewOf(space->prefix)).append(":");
    }
    out.append(viewOf(name));
}

void appendDeclarationName(const xmlNs* space, std::string& out) {
    out.append(space->prefix == nullptr ? "xmlns" : "xmlns:").append(viewOf(space->prefix));
}

}  // namespace

void appendNodeName(const xmlNode* node, std::string& out) {
    switch (node->type) {
        case XML_TEXT_NODE:
            out.append("#text");
            break;
        case XML_CDATA_SECTION_NODE:
            out.append("#cdata-section");
            break;
        case XML_COMMENT_NODE:
            out.append("#comment");
            break;
        case XML_DOCUMENT_NODE:
            out.append("#document");
            break;
        case XML_NAMESPACE_DECL:
            appendDeclarationName(reinterpret_cast<const xmlNs*>(node), out);
            break;
        case XML_ATTRIBUTE_NODE:
            appendQualified(reinterpret_cast<const xmlAttr*>(node)->ns, node->name, out);
            break;
        case XML_ELEMENT_NODE:
            appendQualified(node->ns, node->name, out);
            break;
        default:
            out.append(viewOf(node->name));
            break;
    }
}

void appendNodeText(const xmlNode* node, std::string& out) {
    switch (node->type) {
        case XML_NAMESPACE_DECL:
            out.append(viewOf(reinterpret_cast<const xmlNs*>(node)->href));
            break;
        case XML_ATTRIBUTE_NODE:
            appendValue(node, out);
            break;
        case XML_COMMENT_NODE:
        case XML_PI_NODE:
            out.append(viewOf(node->content));
            break;
        default:
            appendJoinedText(node, out);
            break;
    }
}

}  // namespace intake
