#include "platform/windows/mshtml/ElementList.h"

#include "platform/windows/com/Variant.h"

namespace intake {

namespace {

size_t lengthOf(const ComPointer<IHTMLElementCollection>& collection) {
    LONG length = 0;
    checkCom(collection->get_length(&length));
    return static_cast<size_t>(length);
}

}  // namespace

ElementList::ElementList(ComPointer<IHTMLElementCollection> collection)
    : collection_(std::move(collection)), size_(lengthOf(collection_)) {}

ComPointer<IDispatch> ElementList::item(size_t position) const {
    Variant number;
    number.setInteger(static_cast<long>(position));
    Variant first;  // of those that a name would choose
    first.setInteger(0);
    ComPointer<IDispatch> item;
    checkCom(collection_->item(number.get(), first.get(), item.out()));
    return item;
}

}  // namespace intake
