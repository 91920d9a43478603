#include "formats/xml/XmlBuilder.h"

#include <libxml/SAX2.h>

#include <algorithm>
#include <new>
#include <string_view>

#include "formats/xml/xml_text.h"

namespace intake {

namespace {

constexpr int MAX_ATTRIBUTES = 5000;

/// The library compares every attribute of an element with every other, and every namespace that
/// holds there too. It keeps five pointers for an attribute and two for a namespace, in arrays that
/// it doubles when they are full.
bool hasTooManyAttributes(const xmlParserCtxt& context) {
    return context.maxatts > 2 * 5 * MAX_ATTRIBUTES || context.nsMax > 2 * 2 * MAX_ATTRIBUTES;
}

bool isBlank(const xmlChar* text, int length) {
    return std::all_of(text, text + length, [](xmlChar character) {
        return character == ' ' || character == '\n' || character == '\r' || character == '\t';
    });
}

/// Whether xml:space="preserve" holds for what is being parsed.
bool isSpacePreserved(const void* context) {
    const int* const space = static_cast<const xmlParserCtxt*>(context)->space;
    return space != nullptr && *space == 1;
}

/// A prefix without declaration and the like do not count as malformed with the library, nor does a
/// text that there is no room for, but nothing can be done with such a document. What it says of
/// the form of a URI is advice.
bool isFatal(const xmlError& error) {
    if (error.domain == XML_FROM_NAMESPACE) {
        return error.code != XML_WAR_NS_URI && error.code != XML_WAR_NS_URI_RELATIVE;
    }
    return error.level == XML_ERR_FATAL || error.code == XML_ERR_NO_MEMORY;
}

/// Marks the text that was added last. Where the document is not well-formed there may be no
/// element, and for want of memory no text.
void keepLastChild(const xmlNode* element) {
    if (element != nullptr && element->last != nullptr) {
        keepSpace(element->last);
    }
}

/// The library reads documents of version 1.1 as such of 1.0, which have no such characters.
bool isOfLaterVersion(const xmlParserCtxt& context, const xmlError& error) {
    return error.code == XML_ERR_INVALID_CHAR && context.version != nullptr &&
           !xmlStrEqual(context.version, reinterpret_cast<const xmlChar*>("1.0"));
}

std::string placed(std::string_view message, int line, int column) {
    return std::string(message.substr(0, message.find_last_not_of('\n') + 1)) + " (line " +
           std::to_string(line) + ", column " + std::to_string(column) + ")";
}

}  // namespace

XmlBuilder::XmlBuilder(xmlParserCtxt* context, const EndMark& endMark, uint64_t mostNodes)
    : context_(*context), endMark_(endMark), mostNodes_(mostNodes) {
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

bool XmlBuilder::wantsMore() {
    if (endMark_.isSet()) {
        refuse("The load was given up");
    } else if (hasTooManyAttributes(context_)) {
        refuse("An element has more than " + std::to_string(MAX_ATTRIBUTES) +
               " attributes or namespaces");
    }
    return error_.empty() && !isOutOfMemory_;
}

void XmlBuilder::refuse(std::string_view reason) {
    const xmlParserInput* const input = context_.input;
    setError(reason, input == nullptr ? 0 : input->line, input == nullptr ? 0 : input->col);
}

/// Nothing may fly through the library.
void XmlBuilder::setError(std::string_view reason, int line, int column) {
    try {
        if (error_.empty()) {
            error_ = placed(reason, line, column);
        }
    } catch (const std::bad_alloc&) {
        stopForWantOfMemory();
    }
}

void XmlBuilder::stopForWantOfMemory() {
    isOutOfMemory_ = true;
    xmlStopParser(&context_);
}

void XmlBuilder::endText() {
    blank_.clear();
    inText_ = false;
}

/// False when there is one node too many: then the parser has
/// been stopped, and what it lends is gone.
bool XmlBuilder::beginNode(int count) {
    endText();
    nodes_ += static_cast<uint64_t>(count);
    if (hasTooManyNodes()) {
        xmlStopParser(&context_);
        return false;
    }
    return true;
}

void XmlBuilder::onText(void* context, const xmlChar* text, int length) {
    XmlBuilder& self = of(context);
    const bool preserved = isSpacePreserved(context);
    if (!self.inText_ && !preserved && isBlank(text, length)) {
        self.keepBlank({reinterpret_cast<const char*>(text), static_cast<size_t>(length)});
        return;
    }
    if (!self.blank_.empty()) {
        xmlSAX2Characters(context, reinterpret_cast<const xmlChar*>(self.blank_.data()),
                          static_cast<int>(self.blank_.size()));
        self.blank_.clear();
    }
    self.nodes_ += self.inText_ ? 0 : 1;
    self.inText_ = true;
    xmlSAX2Characters(context, text, length);
    if (preserved) {
        keepLastChild(static_cast<xmlParserCtxt*>(context)->node);
    }
}

/// Blanks may be of any length, and nothing may fly through the library.
void XmlBuilder::keepBlank(std::string_view text) {
    try {
        blank_.append(text);
    } catch (const std::bad_alloc&) {
        stopForWantOfMemory();
    }
}

/// The library gives a node without its text when there is no room for that.
void XmlBuilder::add(xmlNode* node, bool isWhole) {
    if (node == nullptr || !isWhole) {
        stopForWantOfMemory();
    }
    xmlNode* const parent = context_.node;
    if (xmlAddChild(parent != nullptr ? parent : reinterpret_cast<xmlNode*>(context_.myDoc),
                    node) == nullptr) {
        xmlFreeNode(node);
    }
}

/// The library's own function would join sections that stand side by side, and what they hold
/// together may not stand in one.
void XmlBuilder::onCData(void* context, const xmlChar* text, int length) {
    XmlBuilder& self = of(context);
    if (!self.beginNode()) {
        return;
    }
    xmlNode* const section = xmlNewCDataBlock(self.context_.myDoc, text, length);
    self.add(section, section != nullptr && (length == 0 || section->content != nullptr));
}

/// The library's own functions leave out a comment or an instruction that there is no room for.
void XmlBuilder::onComment(void* context, const xmlChar* text) {
    XmlBuilder& self = of(context);
    if (!self.beginNode()) {
        return;
    }
    xmlNode* const comment = xmlNewDocComment(self.context_.myDoc, text);
    self.add(comment, comment != nullptr && (text == nullptr || comment->content != nullptr));
}

void XmlBuilder::onInstruction(void* context, const xmlChar* target, const xmlChar* data) {
    XmlBuilder& self = of(context);
    if (!self.beginNode()) {
        return;
    }
    xmlNode* const instruction = xmlNewDocPI(self.context_.myDoc, target, data);
    self.add(instruction, instruction != nullptr && instruction->name != nullptr &&
                              (data == nullptr || instruction->content != nullptr));
}

void XmlBuilder::onStartElement(void* context, const xmlChar* name, const xmlChar* prefix,
                                const xmlChar* uri, int namespaceCount, const xmlChar** namespaces,
                                int attributeCount, int defaultedCount,
                                const xmlChar** attributes) {
    constexpr int NODES_OF_AN_ATTRIBUTE = 2;  // itself and its text
    if (of(context).beginNode(1 + NODES_OF_AN_ATTRIBUTE * attributeCount)) {
        xmlSAX2StartElementNs(context, name, prefix, uri, namespaceCount, namespaces,
                              attributeCount, defaultedCount, attributes);
    }
}

void XmlBuilder::onEndElement(void* context, const xmlChar* name, const xmlChar* prefix,
                              const xmlChar* uri) {
    of(context).endText();
    xmlSAX2EndElementNs(context, name, prefix, uri);
}

void XmlBuilder::onDtd(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    of(context).refuse("DTD is prohibited");
    xmlStopParser(static_cast<xmlParserCtxt*>(context));
}

void XmlBuilder::onError(void* context, xmlError* error) {
    XmlBuilder& self = of(context);
    self.isOutOfMemory_ = self.isOutOfMemory_ || error->code == XML_ERR_NO_MEMORY;
    if (isFatal(*error) && error->message != nullptr) {
        self.setError(isOfLaterVersion(self.context_, *error)
                          ? "Control characters as in XML 1.1 cannot be read"
                          : error->message,
                      error->line, error->int2);
    }
}

}  // namespace intake
