#include "platform/linux/xml/LibxmlXPath.h"

#include <libxml/xpathInternals.h>

#include <new>
#include <string_view>

#include "formats/xml/xml_load.h"
#include "platform/linux/base/com_failures.h"

namespace intake {

namespace {

constexpr unsigned long MAX_STEPS = 500'000'000;

/// A document whose root element bears the declarations, and nothing else.
XmlDoc parseDeclarations(const std::string& declarations) {
    const EndMark never;
    const std::string text = "<namespaces " + declarations + "/>";
    LoadedXml loaded = loadXml(TextSource(text), never);
    const xmlNode* const root = xmlDocGetRootElement(loaded.document.get());
    if (root == nullptr || root->properties != nullptr || root->children != nullptr) {
        UNSPECIFIED.raise(
            LIBXML2, "The namespaces are not a sequence of xmlns declarations: " + declarations);
    }
    return std::move(loaded.document);
}

}  // namespace

LibxmlXPath::LibxmlXPath() : context_(xmlXPathNewContext(nullptr)) {
    if (context_ == nullptr) {
        throw std::bad_alloc();
    }
    context_->opLimit = MAX_STEPS;
}

void LibxmlXPath::setNamespaces(const std::string& declarations) {
    const XmlDoc declared = parseDeclarations(declarations);
    xmlXPathRegisteredNsCleanup(context_.get());
    for (const xmlNs* space = xmlDocGetRootElement(declared.get())->nsDef; space != nullptr;
         space = space->next) {
        if (space->prefix != nullptr) {  // XPath has no default namespace
            xmlXPathRegisterNs(context_.get(), space->prefix, space->href);
        }
    }
}

XPathExpression LibxmlXPath::compile(const std::string& expression) {
    expression_ = expression;
    xmlResetLastError();
    XPathExpression compiled(
        xmlXPathCtxtCompile(context_.get(), reinterpret_cast<const xmlChar*>(expression.c_str())));
    if (compiled == nullptr) {
        fail("Invalid expression");
    }
    return compiled;
}

XPathSelection LibxmlXPath::select(const XPathExpression& expression, xmlDoc* document,
                                   xmlNode* from) {
    context_->doc = document;
    context_->node = from;
    context_->opCount = 0;
    xmlResetLastError();
    XPathSelection selection(xmlXPathCompiledEval(expression.get(), context_.get()));
    if (selection == nullptr) {
        fail("The expression could not be evaluated");
    }
    if (selection->type != XPATH_NODESET) {
        fail("Expression must evaluate to a node-set");
    }
    return selection;
}

void LibxmlXPath::fail(const std::string& otherwise) const {
    const xmlError* const error = xmlGetLastError();
    std::string_view reason = error == nullptr || error->message == nullptr ? "" : error->message;
    reason = reason.substr(0, reason.find_last_not_of('\n') + 1);
    UNSPECIFIED.raise(LIBXML2,
                      (reason.empty() ? otherwise : std::string(reason)) + ": " + expression_);
}

}  // namespace intake
