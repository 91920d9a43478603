#pragma once

#include <optional>
#include <vector>

#include "platform/XmlDocument.h"
#include "platform/windows/com/BasicString.h"
#include "platform/windows/com/ComPointer.h"
#include "platform/windows/msxml/msxml.h"

namespace intake {

/// An XML document by DOMDocument60. A node is an IXMLDOMNode; the document holds the references to
/// those that it lends for longer than a callback.
class MsxmlDocument final : public XmlDocument {
public:
    MsxmlDocument(ComPointer<IXMLDOMDocument2> document, TextEncoding encoding);

    bool loadFile(const std::string& path) override;
    bool loadText(std::string_view text) override;

    /// As loadText, of a text of the system's own.
    bool load(const BasicString& text);

    /// As MSXML words it, which names no place.
    std::string parseErrorReason() override;

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
    using GetText = HRESULT (WINAPI IXMLDOMNode::*)(BSTR*);

    Node lend(ComPointer<IXMLDOMNode> node);
    void forget();
    void append(Node node, GetText get, std::string& out);

    const unsigned codePage_;
    ComPointer<IXMLDOMDocument2> document_;
    ComPointer<IXMLDOMNodeList> selection_;
    std::vector<ComPointer<IXMLDOMNode>> lent_;
    std::optional<BasicString> key_;
    BasicString text_;  // what was taken from a node last
};

}  // namespace intake
