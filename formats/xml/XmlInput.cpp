#include "formats/xml/XmlInput.h"

namespace intake {

int XmlInput::onRead(void* input, char* buffer, int capacity) {
    return static_cast<XmlInput*>(input)->read(buffer, capacity);
}

int XmlInput::read(char* buffer, int capacity) {
    if (!builder_.wantsMore()) {
        return -1;
    }
    try {
        const size_t length = source_.read(offset_, buffer, static_cast<size_t>(capacity));
        offset_ += length;
        return static_cast<int>(length);
    } catch (...) {
        failure_ = std::current_exception();
        return -1;
    }
}

void XmlInput::throwFailure() const {
    if (failure_ != nullptr) {
        std::rethrow_exception(failure_);
    }
}

}  // namespace intake
