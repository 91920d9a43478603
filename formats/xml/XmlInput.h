#pragma once

#include <cstdint>
#include <exception>

#include "formats/source/ByteSource.h"
#include "formats/xml/XmlBuilder.h"

namespace intake {

/// What a parser reads from, piece by piece. Made for one parse; borrows both.
class XmlInput {
public:
    /// Reads from `offset` on, as long as the builder wants more.
    XmlInput(const ByteSource& source, uint64_t offset, XmlBuilder& builder)
        : source_(source), offset_(offset), builder_(builder) {}

    /// What libxml2 calls; `input` is an XmlInput.
    static int onRead(void* input, char* buffer, int capacity);

    /// Throws again what the source threw, since nothing may fly through the library.
    void throwFailure() const;

private:
    int read(char* buffer, int capacity);

    const ByteSource& source_;
    uint64_t offset_;
    XmlBuilder& builder_;
    std::exception_ptr failure_;
};

}  // namespace intake
