#pragma once

#include <libxml/parser.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "formats/source/EndMark.h"

namespace intake {

/// Builds libxml2's tree from its parser's events, leaving out text that is white space only (the
/// library's own option for that keeps some) and marking text whose white space is to be kept. A
/// DTD stops the parser. Made for one parse; installed into its context.
class XmlBuilder {
public:
    /// Both are borrowed and outlive this object.
    XmlBuilder(xmlParserCtxt* context, const EndMark& endMark, uint64_t mostNodes);

    /// What is wrong with the document, with its place; empty when nothing is.
    const std::string& error() const { return error_; }

    /// Whether there was no memory for all of the document.
    bool isOutOfMemory() const { return isOutOfMemory_; }

    /// Whether the parser was stopped because there are more nodes than there may be.
    bool hasTooManyNodes() const { return nodes_ > mostNodes_; }

    /// False, which is an error, when nobody waits for the document any more, or when it would take
    /// hours.
    bool wantsMore();

    /// Makes this the error, at the place where the parser is, if there is none yet.
    void refuse(std::string_view reason);

private:
    static XmlBuilder& of(void* context);

    static void onText(void* context, const xmlChar* text, int length);
    static void onCData(void* context, const xmlChar* text, int length);
    static void onComment(void* context, const xmlChar* text);
    static void onInstruction(void* context, const xmlChar* target, const xmlChar* data);
    static void onStartElement(void* context, const xmlChar* name, const xmlChar* prefix,
                               const xmlChar* uri, int namespaceCount, const xmlChar** namespaces,
                               int attributeCount, int defaultedCount, const xmlChar** attributes);
    static void onEndElement(void* context, const xmlChar* name, const xmlChar* prefix,
                             const xmlChar* uri);
    static void onDtd(void* context, const xmlChar* name, const xmlChar* externalId,
                      const xmlChar* systemId);
    static void onError(void* context, xmlError* error);

    void endText();
    bool beginNode(int count = 1);
    void add(xmlNode* node, bool isWhole);
    void keepBlank(std::string_view text);
    void setError(std::string_view reason, int line, int column);
    void stopForWantOfMemory();

    xmlParserCtxt& context_;
    const EndMark& endMark_;
    const uint64_t mostNodes_;
    uint64_t nodes_ = 0;
    std::string blank_;  // white space that may turn out to begin a text
    bool inText_ = false;
    bool isOutOfMemory_ = false;
    std::string error_;  // the first one
};

}  // namespace intake
