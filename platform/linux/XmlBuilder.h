#pragma once

#include <libxml/parser.h>

#include <string>

namespace intake {

/// Builds libxml2's tree from its parser's events, leaving out text that is white space only. (The
/// library's own option for that keeps some.) Made for one parse; installed into its context.
class XmlBuilder {
public:
    /// `context` is borrowed and outlives this object.
    explicit XmlBuilder(xmlParserCtxt* context);

    bool metDtd() const { return metDtd_; }
    bool preservesSpace() const { return preservesSpace_; }

    /// What the parser found wrong first, with its place; empty when nothing.
    const std::string& firstError() const { return firstError_; }

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

    std::string blank_;  // white space that may turn out to begin a text
    bool inText_ = false;
    bool metDtd_ = false;
    bool preservesSpace_ = false;
    std::string firstError_;
};

}  // namespace intake
