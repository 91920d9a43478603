#include "tests/support/xml_dump.h"

#include "formats/xml/xml_text.h"
#include "tests/support/in_quotes.h"

namespace intake {

namespace {

std::string nameOf(const xmlChar* name, const xmlNs* space) {
    const std::string local(viewOf(name));
    return space == nullptr ? local : "{" + std::string(viewOf(space->href)) + "}" + local;
}

std::string describe(const xmlNode& node) {
    switch (node.type) {
        case XML_ELEMENT_NODE:
            return "element " + nameOf(node.name, node.ns);
        case XML_TEXT_NODE:
            return "text " + inQuotes(viewOf(node.content));
        case XML_CDATA_SECTION_NODE:
            return "section " + inQuotes(viewOf(node.content));
        case XML_COMMENT_NODE:
            return "comment " + inQuotes(viewOf(node.content));
        case XML_PI_NODE:
            return "instruction " + nameOf(node.name, nullptr) + " " +
                   inQuotes(viewOf(node.content));
        default:
            return "node of type " + std::to_string(node.type);
    }
}

class Dump {
public:
    std::string take() { return std::move(out_); }

    /// Documents that are looked at are not deep.
    void add(const xmlNode& node, size_t depth) {
        line(depth, describe(node));
        if (node.type != XML_ELEMENT_NODE) {
            return;
        }
        for (const xmlAttr* each = node.properties; each != nullptr; each = each->next) {
            std::string value;
            appendNodeText(reinterpret_cast<const xmlNode*>(each), value);
            line(depth + 1, "attribute " + nameOf(each->name, each->ns) + " " + inQuotes(value));
        }
        for (const xmlNode* child = node.children; child != nullptr; child = child->next) {
            add(*child, depth + 1);
        }
    }

private:
    void line(size_t depth, const std::string& text) {
        out_ += std::string(depth * 2, ' ') + text + "\n";
    }

    std::string out_;
};

}  // namespace

std::string dumpXml(const xmlNode* root) {
    Dump dump;
    dump.add(*root, 0);
    return dump.take();
}

}  // namespace intake
