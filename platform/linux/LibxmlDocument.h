#pragma once

#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/XmlDocument.h"

namespace intake {

/// XML by libxml2.
class LibxmlDocument final : public XmlDocument {
public:
    explicit LibxmlDocument(TextEncoding encoding) : encoding_(encoding) {}

    bool loadFile(const std::string& path) override;
    bool loadText(std::string_view text) override;

    /// As loadText; `charset`, when not empty, goes before what the text says of itself.
    bool loadBytes(std::string_view text, const std::string& charset);

    std::string parseErrorReason() override { return reason_; }

    void setSelectionNamespaces(const std::string& declarations) override;
    bool selectNodes(const std::string& expression) override;
    size_t selectedCount() override;
    Node selected(size_t position) override;
    void setKeyExpression(const std::string& expression) override;
    bool appendKeyText(Node row, std::string& out) override;

    void forEachChild(Node parent, const Visit& visit) override;
    bool isElement(Node node) override;
    bool hasElements(Node node) override;
    void appendName(Node node, std::string& out) override;
    void appendText(Node node, std::string& out) override;
    void appendMarkup(Node node, std::string& out) override;
    bool attribute(Node element, const std::string& name, std::string& value) override;

    Node rootElement() override;
    Node appendElement(Node parent, const std::string& name) override;
    void setText(Node element, const std::string& text) override;

private:
    struct DocumentDeleter {
        void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
    };
    struct ContextDeleter {
        void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
    };
    struct ResultDeleter {
        void operator()(xmlXPathObject* result) const { xmlXPathFreeObject(result); }
    };
    struct ExpressionDeleter {
        void operator()(xmlXPathCompExpr* expression) const { xmlXPathFreeCompExpr(expression); }
    };
    using Document = std::unique_ptr<xmlDoc, DocumentDeleter>;
    using Result = std::unique_ptr<xmlXPathObject, ResultDeleter>;
    using Expression = std::unique_ptr<xmlXPathCompExpr, ExpressionDeleter>;

    struct Prefix {
        std::string name, uri;
    };

    void replaceDocument(Document document);
    xmlXPathContext* context();
    Expression compile(const std::string& expression);
    Result evaluate(const Expression& expression, Node from);
    void append(std::string_view utf8, std::string& out) const;

    TextEncoding encoding_;
    std::string reason_;
    std::vector<Prefix> prefixes_;
    // Freed from below: what selects refers to what is selected from.
    Document document_;
    std::unique_ptr<xmlXPathContext, ContextDeleter> context_;
    Result selection_;
    Expression key_;
    std::string scratch_;
};

}  // namespace intake
