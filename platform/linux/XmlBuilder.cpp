#include "platform/linux/XmlBuilder.h"

#include <libxml/SAX2.h>

#include <algorithm>
#include <string_view>

namespace intake {

namespace {

bool isBlank(const xmlChar* text, int length) {
    return std::all_of(text, text + length, [](xmlChar character) {
        return character == ' ' || character == '\n' || character == '\r' || character == '\t';
    });
}

bool isSpacePreserved(const void* context) {
    const int* const space = static_cast<const xmlParserCtxt*>(context)->space;
    return space != nullptr && *space == 1;
}

}  // namespace

XmlBuilder::XmlBuilder(xmlParserCtxt* context) {
    xmlSAXHandler& handler = *context->sax;
    xmlSAXVersion(&handler, 2);
    handler.characters = onText;
    handler.ignorableWhitespace = onText;
    handler.cdataBlock = onCData;
    handler.comment = onComment;
    handler.processingInstruction = onInstruction;
    handler.startElementNs = onStartElement;
    handler.endElementNs = onEndElement;
    handler.internalSubset = onDtd;
    handler.serror = onError;
    context->_private = this;
}

XmlBuilder& XmlBuilder::of(void* context) {
    return *static_cast<XmlBuilder*>(static_cast<xmlParserCtxt*>(context)->_private);
}

void XmlBuilder::endText() {
    blank_.clear();
    inText_ = false;
}

void XmlBuilder::onText(void* context, const xmlChar* text, int length) {
    XmlBuilder& self = of(context);
    if (!self.inText_ && !isSpacePreserved(context) && isBlank(text, length)) {
        self.blank_.append(reinterpret_cast<const char*>(text), static_cast<size_t>(length));
        return;
    }
    if (!self.blank_.empty()) {
        xmlSAX2Characters(context, reinterpret_cast<const xmlChar*>(self.blank_.data()),
                          static_cast<int>(self.blank_.size()));
        self.blank_.clear();
    }
    self.inText_ = true;
    xmlSAX2Characters(context, text, length);
}

void XmlBuilder::onCData(void* context, const xmlChar* text, int length) {
    of(context).endText();
    xmlSAX2CDataBlock(context, text, length);
}

void XmlBuilder::onComment(void* context, const xmlChar* text) {
    of(context).endText();
    xmlSAX2Comment(context, text);
}

void XmlBuilder::onInstruction(void* context, const xmlChar* target, const xmlChar* data) {
    of(context).endText();
    xmlSAX2ProcessingInstruction(context, target, data);
}

void XmlBuilder::onStartElement(void* context, const xmlChar* name, const xmlChar* prefix,
                                const xmlChar* uri, int namespaceCount, const xmlChar** namespaces,
                                int attributeCount, int defaultedCount,
                                const xmlChar** attributes) {
    XmlBuilder& self = of(context);
    self.endText();
    self.preservesSpace_ = self.preservesSpace_ || isSpacePreserved(context);
    xmlSAX2StartElementNs(context, name, prefix, uri, namespaceCount, namespaces, attributeCount,
                          defaultedCount, attributes);
}

void XmlBuilder::onEndElement(void* context, const xmlChar* name, const xmlChar* prefix,
                              const xmlChar* uri) {
    of(context).endText();
    xmlSAX2EndElementNs(context, name, prefix, uri);
}

void XmlBuilder::onDtd(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    of(context).metDtd_ = true;
    xmlStopParser(static_cast<xmlParserCtxt*>(context));
}

void XmlBuilder::onError(void* context, xmlError* error) {
    XmlBuilder& self = of(context);
    if (!self.firstError_.empty() || error->level < XML_ERR_ERROR || error->message == nullptr) {
        return;
    }
    std::string_view message = error->message;
    message = message.substr(0, message.find_last_not_of('\n') + 1);
    self.firstError_ = std::string(message) + " (line " + std::to_string(error->line) +
                       ", column " + std::to_string(error->int2) + ")";
}

}  // namespace intake
