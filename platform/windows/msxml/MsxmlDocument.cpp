#include "platform/windows/msxml/MsxmlDocument.h"

#include <algorithm>

#include "platform/windows/base/wide_text.h"
#include "platform/windows/com/Variant.h"
#include "platform/windows/com/com_error.h"

namespace intake {

namespace {

constexpr unsigned ISO_8859_1 = 28591;

IXMLDOMNode& toSystem(XmlDocument::Node node) {
    return *static_cast<IXMLDOMNode*>(node);
}

DOMNodeType typeOf(IXMLDOMNode& node) {
    DOMNodeType type = NODE_INVALID;
    checkCom(node.get_nodeType(&type));
    return type;
}

std::string onOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return text;
}

/// The node behind this one; null behind the last.
ComPointer<IXMLDOMNode> nextOf(IXMLDOMNode& node) {
    ComPointer<IXMLDOMNode> next;
    checkCom(node.get_nextSibling(next.out()));
    return next;
}

ComPointer<IXMLDOMNode> firstChildOf(IXMLDOMNode& node) {
    ComPointer<IXMLDOMNode> child;
    checkCom(node.get_firstChild(child.out()));
    return child;
}

}  // namespace

MsxmlDocument::MsxmlDocument(ComPointer<IXMLDOMDocument2> document, TextEncoding encoding)
    : codePage_(encoding == TextEncoding::UTF8 ? CP_UTF8 : ISO_8859_1),
      document_(std::move(document)) {
    checkCom(document_->put_async(VARIANT_FALSE));
    checkCom(document_->put_validateOnParse(VARIANT_FALSE));
    checkCom(document_->put_resolveExternals(VARIANT_FALSE));
}

bool MsxmlDocument::loadFile(const std::string& path) {
    forget();
    Variant source;
    source.setText(path);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    checkCom(document_->load(source.get(), &loaded));
    return loaded != VARIANT_FALSE;
}

bool MsxmlDocument::loadText(std::string_view text) {
    return load(BasicString(text));
}

bool MsxmlDocument::load(const BasicString& text) {
    forget();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    checkCom(document_->loadXML(text.get(), &loaded));
    return loaded != VARIANT_FALSE;
}

std::string MsxmlDocument::parseErrorReason() {
    ComPointer<IXMLDOMParseError> error;
    checkCom(document_->get_parseError(error.out()));
    BasicString reason;
    checkCom(error->get_reason(reason.out()));
    std::string text;
    appendNarrow(reason.view(), codePage_, text);
    return text;
}

void MsxmlDocument::setSelectionNamespaces(const std::string& declarations) {
    Variant value;
    value.setText(onOneLine(declarations));
    checkCom(document_->setProperty(BasicString("SelectionNamespaces").get(), value.get()));
}

bool MsxmlDocument::selectNodes(const std::string& expression) {
    forget();
    checkCom(document_->selectNodes(BasicString(expression).get(), selection_.out()));
    return static_cast<bool>(selection_);
}

size_t MsxmlDocument::selectedCount() {
    long count = 0;
    if (selection_) {
        checkCom(selection_->get_length(&count));
    }
    return static_cast<size_t>(count);
}

XmlDocument::Node MsxmlDocument::selected(size_t position) {
    ComPointer<IXMLDOMNode> node;
    checkCom(selection_->get_item(static_cast<long>(position), node.out()));
    if (!node) {
        checkCom(E_UNEXPECTED);  // a kind of node that the system cannot hand out
    }
    return lend(std::move(node));
}

void MsxmlDocument::setKeyExpression(const std::string& expression) {
    key_.emplace(expression);
}

bool MsxmlDocument::appendKeyText(Node row, std::string& out) {
    ComPointer<IXMLDOMNode> key;
    checkCom(toSystem(row).selectSingleNode(key_ ? key_->get() : nullptr, key.out()));
    if (!key) {
        return false;
    }
    appendText(key.get(), out);
    return true;
}

void MsxmlDocument::forEachChild(Node parent, const Visit& visit) {
    for (auto child = firstChildOf(toSystem(parent)); child; child = nextOf(*child.get())) {
        visit(child.get());
    }
}

bool MsxmlDocument::isElement(Node node) {
    return typeOf(toSystem(node)) == NODE_ELEMENT;
}

bool MsxmlDocument::hasElements(Node node) {
    auto child = firstChildOf(toSystem(node));
    while (child && !isElement(child.get())) {
        child = nextOf(*child.get());
    }
    return static_cast<bool>(child);
}

void MsxmlDocument::append(Node node, GetText get, std::string& out) {
    checkCom((toSystem(node).*get)(text_.out()));
    appendNarrow(text_.view(), codePage_, out);
}

void MsxmlDocument::appendName(Node node, std::string& out) {
    append(node, &IXMLDOMNode::get_nodeName, out);
}

void MsxmlDocument::appendText(Node node, std::string& out) {
    append(node, &IXMLDOMNode::get_text, out);
}

void MsxmlDocument::appendMarkup(Node node, std::string& out) {
    append(node, &IXMLDOMNode::get_xml, out);
}

bool MsxmlDocument::attribute(Node element, const std::string& name, std::string& value) {
    ComPointer<IXMLDOMElement> system;
    checkCom(toSystem(element).QueryInterface(IID_DOM_ELEMENT, system.outAny()));
    Variant found;
    checkCom(system->getAttribute(BasicString(name).get(), found.out()));
    if (found.get().vt != VT_BSTR) {
        return false;
    }
    value.clear();
    appendNarrow({found.get().bstrVal, SysStringLen(found.get().bstrVal)}, codePage_, value);
    return true;
}

XmlDocument::Node MsxmlDocument::rootElement() {
    ComPointer<IXMLDOMElement> root;
    checkCom(document_->get_documentElement(root.out()));
    if (!root) {
        return nullptr;
    }
    root->AddRef();
    return lend(ComPointer<IXMLDOMNode>(root.get()));
}

XmlDocument::Node MsxmlDocument::appendElement(Node parent, const std::string& name) {
    ComPointer<IXMLDOMElement> element;
    checkCom(document_->createElement(BasicString(name).get(), element.out()));
    ComPointer<IXMLDOMNode> appended;
    checkCom(toSystem(parent).appendChild(element.get(), appended.out()));
    return lend(std::move(appended));
}

/// The children are taken out first, since some may be lent: setting a text destroys them under
/// Wine.
void MsxmlDocument::setText(Node element, const std::string& text) {
    for (auto child = firstChildOf(toSystem(element)); child;
         child = firstChildOf(toSystem(element))) {
        checkCom(toSystem(element).removeChild(child.get(), nullptr));
    }
    checkCom(toSystem(element).put_text(BasicString(text).get()));
}

XmlDocument::Node MsxmlDocument::lend(ComPointer<IXMLDOMNode> node) {
    lent_.push_back(std::move(node));
    return lent_.back().get();
}

void MsxmlDocument::forget() {
    lent_.clear();
    selection_.reset();
}

}  // namespace intake
