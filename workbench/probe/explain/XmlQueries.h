#pragma once

#include <libxml/xpath.h>

#include <memory>
#include <string>
#include <vector>

#include "formats/xml/xml_load.h"

namespace probe {

/// Asks a document for nodes by XPath 1.0. Borrows the document; belongs to one thread.
class XmlQueries {
public:
    /// What an expression finds, in no certain order, or why it cannot be asked.
    struct Answer {
        std::vector<xmlNode*> nodes;
        std::size_t declarations = 0;  // of namespaces, that are found too
        std::string fault;             // in a few words; empty when there is none
        std::string unknownPrefix;     // that nothing declares
    };

    /// `declarations` is a sequence of xmlns declarations.
    XmlQueries(xmlDoc* document, const std::string& declarations);

    /// Whether the declarations could be read.
    bool knowsDeclarations() const { return knowsDeclarations_; }

    /// What a prefix stands for, as the library keeps it; empty for one that is not declared.
    std::string_view addressOf(const std::string& prefix) const;

    /// Asks from the document, or from a node of it. An expression that would take very long is
    /// not answered.
    Answer ask(const std::string& expression, xmlNode* from = nullptr);

private:
    struct ContextDeleter {
        void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
    };
    struct ExpressionDeleter {
        void operator()(xmlXPathCompExpr* expression) const { xmlXPathFreeCompExpr(expression); }
    };

    /// That of the last question, when it is the same; null for what is no expression.
    xmlXPathCompExpr* compiled(const std::string& expression);

    xmlDoc* document_;
    std::unique_ptr<xmlXPathContext, ContextDeleter> context_;
    bool knowsDeclarations_ = true;
    std::string expression_;
    std::unique_ptr<xmlXPathCompExpr, ExpressionDeleter> compiled_;
};

}  // namespace probe
