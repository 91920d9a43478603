#include "tests/conformance/tree_dump.h"

#include <algorithm>
#include <vector>

namespace intake::html {

namespace {

std::string inQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

class Dump {
public:
    std::string take() { return std::move(out_); }

    /// What is below a node. Pages of tests are not deep.
    void children(const Node& parent, size_t depth) {
        for (const Node* node = parent.firstChild; node != nullptr; node = node->next) {
            if (node->type == NodeType::TEXT) {
                std::string text;
                while (node->next != nullptr && node->next->type == NodeType::TEXT) {
                    text += node->text;
                    node = node->next;
                }
                line(depth, inQuotes(text + std::string(node->text)));
            } else {
                single(*node, depth);
            }
        }
    }

private:
    void line(size_t depth, const std::string& text) {
        out_ += "| " + std::string(depth * 2, ' ') + text + "\n";
    }

    void single(const Node& node, size_t depth) {
        if (node.type == NodeType::COMMENT) {
            return line(depth, "<!-- " + std::string(node.text) + " -->");
        }
        if (node.type == NodeType::DOCTYPE) {
            return line(depth, doctype(node));
        }
        const char* const prefix = node.space == Namespace::SVG      ? "svg "
                                   : node.space == Namespace::MATHML ? "math "
                                                                     : "";
        line(depth, "<" + (prefix + std::string(node.text)) + ">");
        attributes(node, depth + 1);
        if (node.content != nullptr) {
            line(depth + 1, "content");
            children(*node.content, depth + 2);
        }
        children(node, depth + 1);
    }

    static std::string doctype(const Node& node) {
        const std::string_view publicId = node.attributes->value;
        const std::string_view systemId = node.attributes->next->value;
        std::string text = "<!DOCTYPE " + std::string(node.text);
        if (!publicId.empty() || !systemId.empty()) {
            text += " " + inQuotes(publicId) + " " + inQuotes(systemId);
        }
        return text + ">";
    }

    void attributes(const Node& node, size_t depth) {
        std::vector<std::string> lines;
        for (const Attribute* each = node.attributes; each != nullptr; each = each->next) {
            lines.push_back(std::string(each->name) + "=" + inQuotes(each->value));
        }
        std::sort(lines.begin(), lines.end());
        for (const std::string& each : lines) {
            line(depth, each);
        }
    }

    std::string out_;
};

}  // namespace

std::string dumpTree(const Page& page) {
    Dump dump;
    dump.children(page.document, 0);
    return dump.take();
}

}  // namespace intake::html
