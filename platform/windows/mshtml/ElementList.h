#pragma once

#include <cstddef>

#include "platform/windows/com/ComPointer.h"
#include "platform/windows/mshtml/mshtml_api.h"

namespace intake {

/// A collection of elements that does not change, such as the children of an element, the rows of a
/// table or the cells of a row. Throws PlatformError.
class ElementList {
public:
    explicit ElementList(ComPointer<IHTMLElementCollection> collection);

    size_t size() const { return size_; }

    /// The element at a position, as the interface of that identity.
    template <class Interface>
    ComPointer<Interface> at(size_t position, REFIID identity) const {
        return item(position).as<Interface>(identity);
    }

private:
    ComPointer<IDispatch> item(size_t position) const;

    ComPointer<IHTMLElementCollection> collection_;
    size_t size_;
};

}  // namespace intake
