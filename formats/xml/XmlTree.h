#pragma once

#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "formats/xml/XmlArena.h"

namespace intake {

/// Builds a tree of libxml2's nodes in an arena, from its first node to its last. The library may
/// read the tree; it must neither change nor free it. Borrows the arena; belongs to one thread.
class XmlTree {
public:
    explicit XmlTree(XmlArena& arena) : arena_(arena) {}

    /// Begins with an arena that holds no names yet: what is added next goes behind what `parent`
    /// holds, or has none around it.
    void begin(xmlDoc* document, xmlNode* parent) {
        document_ = document;
        parent_ = parent;
        ++age_;
    }

    /// What is added next goes behind what `parent` holds, in the same document.
    void goTo(xmlNode* parent) { parent_ = parent; }

    /// Elements that are added from here on are inside of this one, until it is closed.
    xmlNode* open(std::string_view name, const xmlNs* space, xmlNs* declarations) {
        xmlNode* const element = make(XML_ELEMENT_NODE, nameOf(name));
        element->ns = const_cast<xmlNs*>(space);
        element->nsDef = declarations;
        append(element);
        parent_ = element;
        return element;
    }

    void close() { parent_ = parent_->parent; }

    /// Adds an attribute behind `last`, the element's last one so far. Without an element it stands
    /// alone.
    xmlAttr* addAttribute(xmlNode* element, xmlAttr* last, std::string_view name,
                          const xmlNs* space, std::string_view value) {
        auto* const attribute = arena_.make<xmlAttr>();
        attribute->type = XML_ATTRIBUTE_NODE;
        attribute->name = nameOf(name);
        attribute->ns = const_cast<xmlNs*>(space);
        attribute->doc = document_;
        attribute->parent = element;
        attribute->prev = last;
        if (element != nullptr) {
            (last == nullptr ? element->properties : last->next) = attribute;
        }
        xmlNode* const text = make(XML_TEXT_NODE, xmlStringText);
        text->content = arena_.copy(value);
        text->parent = reinterpret_cast<xmlNode*>(attribute);
        attribute->children = attribute->last = text;
        return attribute;
    }

    xmlNode* addText(std::string_view text) { return addLeaf(XML_TEXT_NODE, xmlStringText, &text); }
    xmlNode* addSection(std::string_view text) {
        return addLeaf(XML_CDATA_SECTION_NODE, nullptr, &text);
    }
    xmlNode* addComment(std::string_view text) {
        return addLeaf(XML_COMMENT_NODE, xmlStringComment, &text);
    }
    xmlNode* addInstruction(std::string_view target, const std::string_view* data) {
        return addLeaf(XML_PI_NODE, arena_.copy(target), data);
    }

private:
    struct KnownName {
        const xmlChar* name;
        size_t size;
        uint64_t age;  // the tree that it is of
    };

    /// A name, which is in the arena once if it comes often.
    const xmlChar* nameOf(std::string_view name) {
        const auto first = static_cast<unsigned char>(name.front());
        const auto last = static_cast<unsigned char>(name.back());
        KnownName& known = names_[(name.size() * 31 + first * 7 + last) % names_.size()];
        if (known.age != age_ || known.size != name.size() ||
            std::memcmp(known.name, name.data(), name.size()) != 0) {
            known = {arena_.copy(name), name.size(), age_};
        }
        return known.name;
    }

    xmlNode* make(xmlElementType type, const xmlChar* name) {
        auto* const node = arena_.make<xmlNode>();
        node->type = type;
        node->name = name;
        node->doc = document_;
        return node;
    }

    xmlNode* addLeaf(xmlElementType type, const xmlChar* name, const std::string_view* content) {
        xmlNode* const leaf = make(type, name);
        leaf->content = content == nullptr ? nullptr : arena_.copy(*content);
        append(leaf);
        return leaf;
    }

    void append(xmlNode* node) {
        node->parent = parent_;
        if (parent_ == nullptr) {
            return;
        }
        node->prev = parent_->last;
        (parent_->last == nullptr ? parent_->children : parent_->last->next) = node;
        parent_->last = node;
    }

    XmlArena& arena_;
    std::array<KnownName, 256> names_{};
    uint64_t age_ = 0;
    xmlDoc* document_ = nullptr;
    xmlNode* parent_ = nullptr;
};

}  // namespace intake
