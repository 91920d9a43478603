#pragma once

#include <cstddef>
#include <string_view>

namespace intake {

/// An attribute of an element, by its local name. Where it is in a namespace, a colon stands before
/// the name.
struct XmlAttribute {
    std::string_view name;
    std::string_view value;
};

/// The attributes of an element, lent for one call.
class XmlAttributes {
public:
    XmlAttributes(const XmlAttribute* first, size_t count) : first_(first), count_(count) {}

    const XmlAttribute* begin() const { return first_; }
    const XmlAttribute* end() const { return first_ + count_; }

    /// The value of an attribute; empty where there is none.
    std::string_view value(std::string_view name) const {
        for (const XmlAttribute& each : *this) {
            if (each.name == name) {
                return each.value;
            }
        }
        return {};
    }

private:
    const XmlAttribute* first_;
    size_t count_;
};

/// What is told of a document while it is read. All texts are lent for one call.
class XmlEvents {
public:
    virtual ~XmlEvents() = default;

    /// Forgets everything: the document is read from its start, perhaps not for the first time.
    virtual void startDocument() = 0;

    /// An element begins. `name` is its local name, and empty outside the root's namespace.
    virtual void startElement(std::string_view name, const XmlAttributes& attributes) = 0;

    /// The element that began last ends. False: nothing more is needed.
    virtual bool endElement() = 0;

    /// Text, in pieces of any size.
    virtual void text(std::string_view text) = 0;
};

}  // namespace intake
