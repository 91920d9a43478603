#include "platform/linux/xml/LibxmlXPath.h"

#include <libxml/xpathInternals.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <new>
#include <string_view>
#include <vector>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "formats/xml/xpath_rewriting.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/xml/xpath_functions.h"

namespace intake {

namespace {

/// In its unit, the library's step; there must be a limit for the watch to change it.
constexpr unsigned long NO_LIMIT = ULONG_MAX;

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

/// Whether a step is missing between slashes, outside of literals: the library overlooks that where
/// a path begins.
bool lacksStep(std::string_view expression) {
    size_t at = expression.find_first_of("'\"/");
    while (at != std::string_view::npos) {
        if (expression[at] == '/') {
            expression.remove_prefix(at + (expression.substr(at).starts_with("//") ? 2 : 1));
            if (hasBehind(expression, 0, '/')) {
                return true;
            }
        } else {
            const size_t end = expression.find(expression[at], at + 1);
            expression.remove_prefix(std::min(end, expression.size() - 1) + 1);
        }
        at = expression.find_first_of("'\"/");
    }
    return false;
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
/// before all that is inside of that.
bool isMisplaced(const xmlNode* node) {
    const xmlNode* const before = node->prev;
    return before != nullptr && node->type != XML_ELEMENT_NODE &&
           before->type == XML_ELEMENT_NODE &&
           xmlFirstElementChild(const_cast<xmlNode*>(before)) != nullptr;
}

/// The node that ends last among a node and all below it.
xmlNode* lastInside(xmlNode* node) {
    while (node->type == XML_ELEMENT_NODE && node->last != nullptr) {
        node = node->last;
    }
    return node;
}

/// Gives a misplaced text the last node inside of the element before it for its neighbour, which
/// gives it its place. Nothing but the axes that lead back looks at that.
void linkBehindInside(xmlNode* node) {
    if (isMisplaced(node)) {
        node->prev = lastInside(node->prev);
    }
}

/// Takes its number from the element before a misplaced text: what is compared with it is compared
/// step by step, which takes long.
void takeNumberBefore(xmlNode* node) {
    if (isMisplaced(node)) {
        node->prev->content = nullptr;
    }
}

void leaveAsItIs(xmlNode*) {}

/// How many nodes were found; -1 when nothing was.
int sizeOf(const XPathSelection& selection) {
    const bool hasNodes = selection != nullptr && selection->type == XPATH_NODESET;
    return hasNodes ? xmlXPathNodeSetGetLength(selection->nodesetval) : -1;
}

/// Gives each node its real neighbour again, and calls `place` for it.
void forEachNode(xmlDoc* document, void (*place)(xmlNode*)) {
    for (xmlNode* node = document->children; node != nullptr;
         node = const_cast<xmlNode*>(nextNode(node))) {
        if (node->next != nullptr) {
            node->next->prev = node;
        }
        place(node);
    }
}

}  // namespace

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

void LibxmlXPath::prepareOrder(xmlDoc* document, const std::string& expression) {
    xmlXPathOrderDocElems(document);
    const bool findsText = mayFindText(expression);
    const bool leadsBack = expression.find("preceding") != std::string::npos;
    if (findsText || isLinked_) {
        forEachNode(document, !findsText  ? leaveAsItIs
                              : leadsBack ? takeNumberBefore
                                          : linkBehindInside);
    }
    isLinked_ = findsText && !leadsBack;
}

LibxmlXPath::LibxmlXPath(const EndMark& endMark, std::chrono::milliseconds limit)
    : context_(xmlXPathNewContext(nullptr)), endMark_(endMark), limit_(limit) {
    if (context_ == nullptr) {
        throw std::bad_alloc();
    }
    context_->opLimit = NO_LIMIT;
    registerXPathFunctions(*context_);
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
    std::vector<std::string> steps;
    const std::string text = rewrittenXPath(expression, steps);
    XPathExpression compiled = compileText(text);
    for (const std::string& step : steps) {
        compileText(step);
    }
    compileText("(" + text + ")");  // or the library would let `//a|` pass
    if (lacksStep(expression)) {
        failFor("Invalid expression");
    }
    return compiled;
}

XPathExpression LibxmlXPath::compileText(const std::string& text) {
    xmlResetLastError();
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
    XPathSelection selection = evaluate(expression);
    throwIfIncomplete();
    if (selection == nullptr) {
        fail("The expression could not be evaluated");
    }
    if (selection->type != XPATH_NODESET) {
        fail("Expression must evaluate to a node-set");
    }
    return selection;
}

/// The library does not always tell of want of memory, and errno tells of it too where an
/// allocation succeeded at its second attempt, in another arena. So what is doubtful is evaluated
/// once more: what was left out the first time would hardly be left out again.
XPathSelection LibxmlXPath::evaluate(const XPathExpression& expression) {
    bool isDoubtful = false;
    XPathSelection selection = evaluateOnce(expression, isDoubtful);
    if (!isDoubtful || endMark_.isSet() || watch_->isLate()) {
        return selection;
    }
    const int found = sizeOf(selection);
    selection = evaluateOnce(expression, isDoubtful);
    if (isDoubtful && (selection == nullptr || sizeOf(selection) != found)) {
        throw std::bad_alloc();
    }
    return selection;
}

XPathSelection LibxmlXPath::evaluateOnce(const XPathExpression& expression, bool& isDoubtful) {
    if (!watch_) {
        watch_.emplace(*context_, endMark_, limit_);
    }
    context_->opCount = 0;
    xmlResetLastError();
    xmlResetError(&context_->lastError);
    watch_->begin();
    errno = 0;
    XPathSelection selection(xmlXPathCompiledEval(expression.get(), context_.get()));
    isDoubtful = errno == ENOMEM;
    watch_->end();
    return selection;
}

/// Throws when the evaluation was ended, or when there was no room for what it found: the library
/// goes on without that.
void LibxmlXPath::throwIfIncomplete() const {
    raiseIfEnded(endMark_, LIBXML2);
    if (watch_->isLate()) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(limit_);
        failFor("Looking for nodes takes more than " + std::to_string(seconds.count()) +
                " seconds of the processor's time");
    }
    for (const xmlError* const error :
         std::array<const xmlError*, 2>{xmlGetLastError(), &context_->lastError}) {
        if (error == nullptr || error->code != XML_ERR_NO_MEMORY) {
            continue;
        }
        const std::string_view message = error->message == nullptr ? "" : error->message;
        if (message.find("hit limit") == std::string_view::npos) {
            throw std::bad_alloc();
        }
        failFor("There are more than " + std::to_string(MOST_NODES_OF_A_SET) +
                " nodes to be found");
    }
}

void LibxmlXPath::fail(const std::string& otherwise) const {
    const xmlError* const error = xmlGetLastError();
    std::string_view reason = error == nullptr || error->message == nullptr ? "" : error->message;
    reason = reason.substr(0, reason.find_last_not_of('\n') + 1);
    if (error != nullptr && error->code == XML_XPATH_UNCLOSED_ERROR) {
        reason = "Missing closing parenthesis";  // where the library speaks of a brace
    }
    failFor(reason.empty() ? otherwise : std::string(reason));
}

void LibxmlXPath::failFor(const std::string& reason) const {
    UNSPECIFIED.raise(LIBXML2, reason + ": " + expression_);
}

}  // namespace intake
