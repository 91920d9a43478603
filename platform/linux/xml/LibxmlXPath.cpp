#include "platform/linux/xml/LibxmlXPath.h"

#include <libxml/xpathInternals.h>

#include <algorithm>
#include <array>
#include <new>
#include <string_view>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
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

/// The expression with the axis written out before names that begin beyond ASCII: the library does
/// not know an absolute path by such a name.
std::string withAxes(const std::string& expression) {
    constexpr std::string_view AXIS = "child::";
    std::string text;
    char quote = 0;
    bool isStep = false;  // behind a slash
    for (const char character : expression) {
        if (quote == 0 && isStep && !isAscii(character)) {
            text.append(AXIS);
        }
        if (quote == 0 && (character == '"' || character == '\'')) {
            quote = character;
        } else if (character == quote) {
            quote = 0;
        }
        isStep = quote == 0 && (character == '/' ||
                                (isStep && XML_SPACE.find(character) != std::string_view::npos));
        text += character;
    }
    return text;
}

bool hasBehind(std::string_view text, size_t at, char sign) {
    at = text.find_first_not_of(XML_SPACE, at);
    return at != std::string_view::npos && text[at] == sign;
}

/// Whether an expression may find anything but elements and attributes: by one of the tests for
/// other nodes, or by a dot behind a slash.
bool mayFindText(std::string_view expression) {
    constexpr std::array<std::string_view, 4> TESTS{"text", "node", "comment",
                                                    "processing-instruction"};
    const auto occurs = [expression](std::string_view word, char next) {
        size_t at = expression.find(word);
        while (at != std::string_view::npos && !hasBehind(expression, at + word.size(), next)) {
            at = expression.find(word, at + 1);
        }
        return at != std::string_view::npos;
    };
    return occurs("/", '.') || std::any_of(TESTS.begin(), TESTS.end(), [&](std::string_view test) {
               return occurs(test, '(');
           });
}

const xmlNode* nextNode(const xmlNode* node) {
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
        return node->children;
    }
    while (node->next == nullptr && node->parent != nullptr) {
        node = node->parent;
    }
    return node->next;
}

/// The library takes a text for its place to be that of the element before it, and so to stand
/// before all that is inside of that. Such an element gets no number, and what is compared with it
/// is compared step by step, which takes long.
void takeNumbersBeforeTexts(xmlDoc* document) {
    for (const xmlNode* node = document->children; node != nullptr; node = nextNode(node)) {
        xmlNode* const before = node->prev;
        if (before != nullptr && node->type != XML_ELEMENT_NODE &&
            before->type == XML_ELEMENT_NODE && xmlFirstElementChild(before) != nullptr) {
            before->content = nullptr;
        }
    }
}

}  // namespace

void LibxmlXPath::numberElements(xmlDoc* document, const std::string& expression) {
    xmlXPathOrderDocElems(document);
    if (mayFindText(expression)) {
        takeNumbersBeforeTexts(document);
    }
}

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
    const std::string text = withAxes(expression);
    XPathExpression compiled(
        xmlXPathCtxtCompile(context_.get(), reinterpret_cast<const xmlChar*>(text.c_str())));
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
