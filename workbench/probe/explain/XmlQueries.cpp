#include "workbench/probe/explain/XmlQueries.h"

#include <libxml/xpathInternals.h>

#include <algorithm>
#include <new>

#include "formats/xml/xml_text.h"

namespace probe {

namespace {

using intake::viewOf;

constexpr unsigned long mostSteps = 1'000'000'000;  // of all questions, some seconds

const xmlChar* toXml(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

struct ObjectDeleter {
    void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
};

/// Of the first name before a single colon that the context does not know.
std::string unknownPrefixIn(const std::string& expression, xmlXPathContext* context) {
    for (auto colon = expression.find(':'); colon != std::string::npos;
         colon = expression.find(':', colon + 1)) {
        if (expression.substr(colon, 2) == "::") {
            ++colon;
            continue;
        }
        auto start = colon;
        while (start > 0 &&
               std::string_view("/[]()@:,|=<>+*'\" \t\r\n").find(expression[start - 1]) ==
                   std::string_view::npos)
            --start;
        const std::string prefix = expression.substr(start, colon - start);
        if (!prefix.empty() && xmlXPathNsLookup(context, toXml(prefix)) == nullptr) return prefix;
    }
    return "";
}

}  // namespace

XmlQueries::XmlQueries(xmlDoc* document, const std::string& declarations)
    : document_(document), context_(xmlXPathNewContext(document)) {
    if (context_ == nullptr) throw std::bad_alloc();
    context_->opLimit = mostSteps;
    xmlXPathRegisterNs(context_.get(), toXml("xml"), XML_XML_NAMESPACE);
    const intake::EndMark never;
    const std::string text = "<namespaces " + declarations + "/>";
    const auto loaded = intake::loadXml(intake::TextSource(text), never);
    const xmlNode* const root = xmlDocGetRootElement(loaded.document.get());
    knowsDeclarations_ =
        root != nullptr && root->properties == nullptr && root->children == nullptr;
    for (const xmlNs* each = knowsDeclarations_ ? root->nsDef : nullptr; each != nullptr;
         each = each->next) {
        if (each->prefix != nullptr) xmlXPathRegisterNs(context_.get(), each->prefix, each->href);
    }
}

std::string_view XmlQueries::addressOf(const std::string& prefix) const {
    return viewOf(xmlXPathNsLookup(context_.get(), toXml(prefix)));
}

xmlXPathCompExpr* XmlQueries::compiled(const std::string& expression) {
    if (compiled_ == nullptr || expression != expression_) {
        compiled_.reset(xmlXPathCtxtCompile(context_.get(), toXml(expression)));
        expression_ = expression;
    }
    return compiled_.get();
}

XmlQueries::Answer XmlQueries::ask(const std::string& expression, xmlNode* from) {
    context_->node = from != nullptr ? from : reinterpret_cast<xmlNode*>(document_);
    xmlResetError(&context_->lastError);
    xmlXPathCompExpr* const question = compiled(expression);
    const std::unique_ptr<xmlXPathObject, ObjectDeleter> object(
        question == nullptr ? nullptr : xmlXPathCompiledEval(question, context_.get()));
    Answer answer;
    if (object == nullptr) {
        constexpr int limitExceeded = int{XML_XPATH_EXPRESSION_OK} + int{XPATH_OP_LIMIT_EXCEEDED};
        const bool isLong = context_->lastError.code == limitExceeded;
        answer.unknownPrefix = unknownPrefixIn(expression, context_.get());
        answer.fault = isLong                         ? "it takes too long"
                       : answer.unknownPrefix.empty() ? "it is no expression of XPath 1.0"
                                                      : "it has an unknown prefix";
        return answer;
    }
    if (object->type != XPATH_NODESET) {
        answer.fault = "it gives a number, a text or a truth value, and not nodes";
    } else if (object->nodesetval != nullptr) {
        const xmlNodeSet& found = *object->nodesetval;
        // What is a namespace declaration lives only as long as the answer of the library.
        std::copy_if(found.nodeTab, found.nodeTab + found.nodeNr, std::back_inserter(answer.nodes),
                     [](const xmlNode* node) { return node->type != XML_NAMESPACE_DECL; });
        answer.declarations = static_cast<std::size_t>(found.nodeNr) - answer.nodes.size();
    }
    return answer;
}

}  // namespace probe
