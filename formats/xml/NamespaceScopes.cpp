#include "formats/xml/NamespaceScopes.h"

namespace intake {

namespace {

/// The namespace that the prefix of xml:space and xml:lang stands for.
constexpr const char* XML_URI = "http://www.w3.org/XML/1998/namespace";
constexpr const char* XMLNS_URI = "http://www.w3.org/2000/xmlns/";

const xmlChar* toXml(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

xmlNs namespaceOf(const xmlChar* prefix, const xmlChar* uri) {
    xmlNs space{};
    space.type = XML_LOCAL_NAMESPACE;
    space.prefix = prefix;
    space.href = uri;
    return space;
}

const xmlNs* xmlNamespace() {
    static const xmlNs space = namespaceOf(reinterpret_cast<const xmlChar*>("xml"),
                                           reinterpret_cast<const xmlChar*>(XML_URI));
    return &space;
}

}  // namespace

bool NamespaceScopes::open(const XmlTag& tag, size_t depth, XmlArena* arena) {
    const size_t before = declared_.size();
    for (const XmlTagAttribute& attribute : tag.attributes) {
        if (attribute.isDeclaration() && !declare(attribute, depth, arena)) {
            return false;
        }
    }
    if (arena == nullptr && declared_.size() != before) {
        xmlNode* const outer = holderAround(depth);
        Holder& added = holders_.emplace_back();
        added.depth = depth;
        added.element.type = XML_ELEMENT_NODE;
        added.element.parent = outer;
        added.element.nsDef = declared_[before].space;
    }
    return true;
}

bool NamespaceScopes::declare(const XmlTagAttribute& attribute, size_t depth, XmlArena* arena) {
    const std::string_view prefix =
        attribute.name.prefixLength == 0 ? std::string_view() : attribute.name.local();
    // The parser leaves an ampersand in the address as it is written.
    const bool isUsual = !prefix.starts_with("xml") &&
                         (prefix.empty() || !attribute.value.empty()) &&
                         attribute.value.find('&') == std::string_view::npos;
    if (!isUsual || attribute.value == XML_URI || attribute.value == XMLNS_URI ||
        declared_.size() == MOST) {
        return false;
    }
    const bool isFirst = declared_.empty() || declared_.back().depth != depth;
    xmlNs* const before = isFirst ? nullptr : declared_.back().space;
    Declared& added = declared_.emplace_back();
    added.prefix = prefix;
    added.uri = attribute.value;
    added.depth = depth;
    added.own = namespaceOf(prefix.empty() ? nullptr : toXml(added.prefix), toXml(added.uri));
    added.space = &added.own;
    if (arena != nullptr) {
        added.space = arena->make<xmlNs>();
        *added.space =
            namespaceOf(prefix.empty() ? nullptr : arena->copy(prefix), arena->copy(added.uri));
    }
    if (before != nullptr) {
        before->next = added.space;
    }
    return true;
}

void NamespaceScopes::closeDeclaring(size_t depth) {
    while (!declared_.empty() && declared_.back().depth == depth) {
        declared_.pop_back();
    }
    if (!holders_.empty() && holders_.back().depth == depth) {
        holders_.pop_back();
    }
}

const xmlNs* NamespaceScopes::find(std::string_view prefix) const {
    for (auto each = declared_.rbegin(); each != declared_.rend(); ++each) {
        if (each->prefix == prefix) {
            return each->uri.empty() ? nullptr : each->space;
        }
    }
    return prefix == "xml" ? xmlNamespace() : nullptr;
}

xmlNs* NamespaceScopes::declarations(size_t depth) {
    xmlNs* first = nullptr;
    for (auto each = declared_.rbegin(); each != declared_.rend() && each->depth == depth; ++each) {
        first = each->space;
    }
    return first;
}

xmlNode* NamespaceScopes::holderAround(size_t depth) {
    if (holders_.empty()) {
        return nullptr;
    }
    Holder& innermost = holders_.back();
    return innermost.depth == depth ? innermost.element.parent : &innermost.element;
}

}  // namespace intake
