#include "readers/xml/payload_writer.h"

#include "readers/xml/nesting.h"

namespace intake {

namespace {

using Node = XmlDocument::Node;

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

void writePayloadRow(XmlDocument& document, Node row, std::string& script) {
    PayloadWriter(document, script).writeChildren(row);
}

}  // namespace intake
