#pragma once

#include <libxml/xpath.h>

#include <memory>
#include <string>

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

/// XPath 1.0 by libxml2. Owned by a document and used on its thread; what fails throws
/// PlatformError with the expression and the reason.
class LibxmlXPath {
public:
    LibxmlXPath();

    /// Replaces the prefixes by those of a sequence of xmlns declarations.
    void setNamespaces(const std::string& declarations);

    /// Lets what an expression finds in a document that is as it will be be put into order fast.
    static void numberElements(xmlDoc* document, const std::string& expression);

    XPathExpression compile(const std::string& expression);

    /// Selects the nodes that an expression finds from `from`. Gives up an expression that would
    /// need more than some seconds.
    XPathSelection select(const XPathExpression& expression, xmlDoc* document, xmlNode* from);

private:
    [[noreturn]] void fail(const std::string& otherwise) const;

    std::unique_ptr<xmlXPathContext, XPathContextDeleter> context_;
    std::string expression_;
};

}  // namespace intake
