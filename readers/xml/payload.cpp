#include "readers/xml/payload.h"

#include <stdexcept>

#include "platform/PlatformError.h"

namespace intake {

namespace {

using Node = XmlDocument::Node;

/// Counts the levels of a recursive walk over a document; a document that is nested too deep must
/// not overflow the stack.
class NestingLevel {
public:
    static constexpr int LIMIT = 1000;

    /// Throws std::length_error beyond the limit.
    explicit NestingLevel(int& depth) : depth_(depth) {
        if (depth_ == LIMIT) {
            throw std::length_error("The document is nested deeper than 1000 elements.\n");
        }
        ++depth_;
    }
    ~NestingLevel() { --depth_; }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;

private:
    int& depth_;
};

/// The walk over the source; recursive, so its depth is limited.
class PayloadConversion {
public:
    PayloadConversion(XmlDocument& source, XmlDocument& target)
        : source_(source), target_(target) {}

    void convert(Node from, Node to) {
        std::string name;
        source_.appendName(from, name);
        if (name == "value") {
            std::string text;
            source_.appendText(from, text);
            target_.setText(to, text);
        } else if (name == "payload") {
            convertElements(from, to);
        } else if (name == "field") {
            std::string fieldName;
            source_.attribute(from, "name", fieldName);
            convertElements(from, target_.appendElement(to, fieldName));
        }
    }

private:
    void convertElements(Node from, Node to) {
        const NestingLevel level(depth_);
        source_.forEachChild(from, [this, to](Node child) {
            if (source_.isElement(child)) {
                convert(child, to);
            }
        });
    }

    XmlDocument& source_;
    XmlDocument& target_;
    int depth_ = 0;
};

/// The writer's way down a row; recursive, so its depth is limited.
class PayloadWriter {
public:
    PayloadWriter(XmlDocument& document, std::string& script)
        : document_(document), script_(script) {}

    void writeChildren(Node node) {
        const NestingLevel level(depth_);
        document_.forEachChild(node, [this](Node child) { write(child); });
    }

private:
    void write(Node node) {
        document_.appendName(node, script_);
        script_ += '=';
        if (document_.hasElements(node)) {
            script_ += '{';
            writeChildren(node);
            script_ += '}';
        } else {
            document_.appendText(node, script_);
        }
        script_ += ';';
    }

    XmlDocument& document_;
    std::string& script_;
    int depth_ = 0;
};

}  // namespace

std::unique_ptr<XmlDocument> KDFToXml(XmlDocument& source, XmlServices& services,
                                      TextEncoding encoding, const EndMark& endMark,
                                      std::string& error) {
    std::unique_ptr<XmlDocument> target;
    try {
        target = services.createDocument(encoding, XmlSource::RESPONSE, endMark);
    } catch (const PlatformError&) {
        error += "ERROR: KDFToXml(): Failed to create the XML Document.\n";
        return nullptr;
    }
    target->loadText("<payload/>");
    if (const Node root = source.rootElement()) {
        PayloadConversion(source, *target).convert(root, target->rootElement());
    }
    return target;
}

void writePayloadRow(XmlDocument& document, Node row, std::string& script) {
    PayloadWriter(document, script).writeChildren(row);
}

}  // namespace intake
