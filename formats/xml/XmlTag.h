#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace intake {

/// A name as it stands in a tag, with or without a prefix. Lent.
struct XmlQName {
    std::string_view whole;
    size_t prefixLength = 0;

    std::string_view prefix() const { return whole.substr(0, prefixLength); }
    std::string_view local() const {
        return prefixLength == 0 ? whole : whole.substr(prefixLength + 1);
    }
};

/// An attribute as it stands in a tag, with its references and line ends resolved. Lent.
struct XmlTagAttribute {
    XmlQName name;
    std::string_view value;

    bool isDeclaration() const {
        return name.prefixLength == 0 ? name.whole == "xmlns" : name.prefix() == "xmlns";
    }
};

/// A start tag. Lent for one call.
struct XmlTag {
    XmlQName name;
    std::span<const XmlTagAttribute> attributes;
    bool isPlain;  // no attribute has a prefix or declares a namespace
};

}  // namespace intake
