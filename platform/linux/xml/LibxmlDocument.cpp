#include "platform/linux/xml/LibxmlDocument.h"

#include <new>
#include <system_error>

#include "formats/text/latin1.h"
#include "formats/xml/xml_markup.h"
#include "formats/xml/xml_text.h"
#include "formats/xml/xpath_attributes.h"
#include "platform/linux/base/RegularFile.h"
#include "platform/linux/base/com_failures.h"

namespace intake {

namespace {

xmlNode* nodeOf(XmlDocument::Node node) {
    return static_cast<xmlNode*>(node);
}

const xmlChar* toXml(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

xmlNode* firstChild(XmlDocument::Node node) {
    return nodeOf(node)->type == XML_NAMESPACE_DECL ? nullptr : nodeOf(node)->children;
}

XmlDoc emptyDocument() {
    XmlDoc document(xmlNewDoc(nullptr));
    if (document == nullptr) {
        throw std::bad_alloc();
    }
    return document;
}

/// Adds a node that was made. The library leaves out what it has no memory for, the name or the
/// content of a node too.
xmlNode* add(xmlNode* node, bool isWhole, XmlDocument::Node parent) {
    if (!isWhole) {
        xmlFreeNode(node);
        throw std::bad_alloc();
    }
    return xmlAddChild(nodeOf(parent), node);
}

bool mayShowAttributes(const XmlRowsWanted& wanted) {
    return wanted.needsMarkup || mayLookAtAttributes(wanted.expression) ||
           (wanted.key && mayLookAtAttributes(*wanted.key));
}

}  // namespace

LibxmlDocument::LibxmlDocument(TextEncoding encoding, const EndMark& endMark)
    : encoding_(encoding), endMark_(endMark), document_(emptyDocument()), xpath_(endMark) {}

void LibxmlDocument::takeRowsWhileLoading(const XmlRowsWanted& wanted, const XmlRowTaker& taker) {
    rows_ = StreamedRows::plan(wanted, taker);
    attributes_ = mayShowAttributes(wanted) ? KeptAttributes::ALL : KeptAttributes::NONE;
}

bool LibxmlDocument::load(const ByteSource& source, const std::string& charset,
                          uint64_t mostNodes) {
    rowsFound_.reset();
    sourceSize_ = source.size();
    if (rows_ == nullptr) {
        return replace(loadXml(source, endMark_, charset, mostNodes, attributes_));
    }
    rowsFound_ = rows_->read(source, charset, endMark_, mostNodes);
    return rowsFound_ ? replace({emptyDocument(), ""})
                      : replace(parseXml(source, endMark_, charset, mostNodes));
}

bool LibxmlDocument::replace(LoadedXml loaded) {
    selection_.reset();
    tree_.reset();
    const bool success = loaded.document != nullptr;
    document_ = success ? std::move(loaded.document) : emptyDocument();
    reason_ = std::move(loaded.reason);
    return success;
}

bool LibxmlDocument::loadFile(const std::string& path) {
    try {
        const RegularFile file(path);
        return load(file, "", ANY_NUMBER_OF_NODES);
    } catch (const std::system_error& error) {
        const bool isOther = error.code() == std::errc::not_supported;
        return replace({nullptr, isOther ? "It is not a file" : error.code().message()});
    }
}

bool LibxmlDocument::loadText(std::string_view text) {
    return loadText(text, "", ANY_NUMBER_OF_NODES);
}

bool LibxmlDocument::loadText(std::string_view text, const std::string& charset,
                              uint64_t mostNodes) {
    try {
        return load(TextSource(text), charset, mostNodes);
    } catch (const TooManyNodes& error) {
        UNSPECIFIED.raise(LIBXML2, error.what());
    }
}

std::string LibxmlDocument::parseErrorReason() {
    std::string reason = reason_;
    encode(reason, 0);
    return reason;
}

void LibxmlDocument::setSelectionNamespaces(const std::string& declarations) {
    xpath_.setNamespaces(declarations);
}

bool LibxmlDocument::selectNodes(const std::string& expression) {
    const XPathExpression compiled = xpath_.compile(expression);
    xpath_.prepareOrder(document_.get(), expression);
    selection_ = select(compiled, reinterpret_cast<xmlNode*>(document_.get()));
    return true;
}

XPathSelection LibxmlDocument::select(const XPathExpression& expression, xmlNode* from) {
    raiseIfEnded(endMark_, LIBXML2);
    return xpath_.select(expression, document_.get(), from);
}

size_t LibxmlDocument::selectedCount() {
    return selection_ == nullptr
               ? 0
               : static_cast<size_t>(xmlXPathNodeSetGetLength(selection_->nodesetval));
}

XmlDocument::Node LibxmlDocument::selected(size_t position) {
    raiseIfEnded(endMark_, LIBXML2);
    return selection_->nodesetval->nodeTab[position];
}

void LibxmlDocument::setKeyExpression(const std::string& expression) {
    key_ = xpath_.compile(expression);
    xpath_.prepareOrder(document_.get(), expression);
}

bool LibxmlDocument::appendKeyText(Node row, std::string& out) {
    if (rows_ != nullptr && rows_->isReading()) {
        const xmlNode* const key = rows_->keyOf(nodeOf(row));
        if (key != nullptr) {
            appendText(const_cast<xmlNode*>(key), out);
        }
        return key != nullptr;
    }
    const XPathSelection found = select(key_, nodeOf(row));
    if (xmlXPathNodeSetIsEmpty(found->nodesetval)) {
        return false;
    }
    appendText(found->nodesetval->nodeTab[0], out);
    return true;
}

void LibxmlDocument::forEachChild(Node parent, const Visit& visit) {
    for (xmlNode* child = firstChild(parent); child != nullptr; child = child->next) {
        visit(child);
    }
}

bool LibxmlDocument::isElement(Node node) {
    return nodeOf(node)->type == XML_ELEMENT_NODE;
}

bool LibxmlDocument::hasElements(Node node) {
    const xmlNode* child = firstChild(node);
    while (child != nullptr && child->type != XML_ELEMENT_NODE) {
        child = child->next;
    }
    return child != nullptr;
}

void LibxmlDocument::encode(std::string& text, size_t start) const {
    if (encoding_ == TextEncoding::ISO_8859_1) {
        narrowToLatin1(text, start);
    }
}

void LibxmlDocument::append(Append write, Node node, std::string& out) const {
    const size_t start = out.size();
    write(nodeOf(node), out);
    encode(out, start);
}

void LibxmlDocument::appendName(Node node, std::string& out) {
    append(appendNodeName, node, out);
}

void LibxmlDocument::appendText(Node node, std::string& out) {
    append(appendNodeText, node, out);
}

void LibxmlDocument::appendMarkup(Node node, std::string& out) {
    append(appendNodeMarkup, node, out);
}

bool LibxmlDocument::attribute(Node element, const std::string& name, std::string& value) {
    std::string eachName;
    for (xmlAttr* each = nodeOf(element)->properties; each != nullptr; each = each->next) {
        auto* const node = reinterpret_cast<xmlNode*>(each);
        eachName.clear();
        appendName(node, eachName);
        if (eachName == name) {
            value.clear();
            appendText(node, value);
            return true;
        }
    }
    return false;
}

XmlDocument::Node LibxmlDocument::rootElement() {
    return xmlDocGetRootElement(document_.get());
}

/// What adds nodes behind those that `parent` holds; null where the nodes are the library's.
XmlTree* LibxmlDocument::treeAt(xmlNode* parent) {
    XmlArena* const arena = document_.get_deleter().arena.get();
    if (arena == nullptr) {
        return nullptr;
    }
    if (!tree_) {
        tree_.emplace(*arena);
        tree_->begin(document_.get(), nullptr);
    }
    tree_->goTo(parent);
    return &*tree_;
}

XmlDocument::Node LibxmlDocument::appendElement(Node parent, const std::string& name) {
    if (xmlValidateQName(toXml(name), 0) != 0) {
        UNSPECIFIED.raise(LIBXML2, "An element cannot be named \"" + name + "\"");
    }
    if (XmlTree* const tree = treeAt(nodeOf(parent))) {
        return tree->open(name, nullptr, nullptr);
    }
    xmlNode* const element = xmlNewDocNode(document_.get(), nullptr, toXml(name), nullptr);
    return add(element, element != nullptr && element->name != nullptr, parent);
}

void LibxmlDocument::setText(Node element, const std::string& text) {
    xmlNode* const node = nodeOf(element);
    XmlTree* const tree = treeAt(node);
    if (tree == nullptr) {
        xmlFreeNodeList(node->children);
    }
    node->children = node->last = nullptr;
    if (text.empty()) {
        return;
    }
    if (tree != nullptr) {
        keepSpace(tree->addText(text));
        return;
    }
    xmlNode* const content = xmlNewDocText(document_.get(), toXml(text));
    keepSpace(add(content, content != nullptr && content->content != nullptr, element));
}

}  // namespace intake
