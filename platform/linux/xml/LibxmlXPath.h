#pragma once

#include <libxml/xpath.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "formats/source/EndMark.h"
#include "formats/xml/xml_load.h"
#include "platform/linux/xml/XPathWatch.h"

namespace intake {

/// What failures name as their source.
constexpr const char* LIBXML2 = "libxml2";

struct XPathContextDeleter {
    void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
};
struct XPathExpressionDeleter {
    void operator()(xmlXPathCompExpr* expression) const { xmlXPathFreeCompExpr(expression); }
};
struct XPathSelectionDeleter {
    void operator()(xmlXPathObject* selection) const { xmlXPathFreeObject(selection); }
};
using XPathExpression = std::unique_ptr<xmlXPathCompExpr, XPathExpressionDeleter>;

/// Nodes in document order. Goes before the document that they are of.
using XPathSelection = std::unique_ptr<xmlXPathObject, XPathSelectionDeleter>;

/// Where the library stops to let a set of nodes grow.
constexpr uint64_t MOST_NODES_OF_A_SET = 10'485'760;

/// A document whose root element bears a sequence of xmlns declarations, and nothing else. Throws
/// PlatformError when they are none.
XmlDoc parseDeclarations(const std::string& declarations);

/// XPath 1.0 by libxml2. Owned by a document and used on its thread; what fails throws
/// PlatformError with the expression and the reason.
class LibxmlXPath {
public:
    static constexpr std::chrono::milliseconds TIME{8000};

    /// All evaluations together may take so much of the processor's time. `endMark` outlives this
    /// object.
    explicit LibxmlXPath(const EndMark& endMark, std::chrono::milliseconds limit = TIME);

    /// Replaces the prefixes by those of a sequence of xmlns declarations.
    void setNamespaces(const std::string& declarations);

    /// Lets what an expression finds in a document be put into the document's order. The document
    /// stays as it is from then on, but for the next of these calls.
    void prepareOrder(xmlDoc* document, const std::string& expression);

    XPathExpression compile(const std::string& expression);

    /// Selects the nodes that an expression finds from `from`.
    XPathSelection select(const XPathExpression& expression, xmlDoc* document, xmlNode* from);

private:
    XPathExpression compileText(const std::string& text);
    XPathSelection evaluate(const XPathExpression& expression);
    XPathSelection evaluateOnce(const XPathExpression& expression, bool& isDoubtful);
    void throwIfIncomplete() const;
    [[noreturn]] void fail(const std::string& otherwise) const;
    [[noreturn]] void failFor(const std::string& reason) const;

    std::unique_ptr<xmlXPathContext, XPathContextDeleter> context_;
    std::string expression_;
    bool isLinked_ = false;  // the document has neighbours that are none
    const EndMark& endMark_;
    const std::chrono::milliseconds limit_;
    std::optional<XPathWatch> watch_;  // from the first evaluation on; goes before the context
};

}  // namespace intake
