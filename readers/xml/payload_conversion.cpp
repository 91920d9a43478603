#include "readers/xml/payload_conversion.h"

#include "platform/PlatformError.h"
#include "readers/xml/nesting.h"

namespace intake {

namespace {

using Node = XmlDocument::Node;

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

}  // namespace intake
