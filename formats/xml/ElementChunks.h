#pragma once

#include <string_view>
#include <vector>

#include "formats/source/ByteStream.h"

namespace intake {

/// Reads a document in chunks that end with a whole element, so that whoever scans one never meets
/// half a tag. Belongs to one thread.
class ElementChunks {
public:
    /// `endTag` is the tag behind which the document may be cut, and outlives this object.
    ElementChunks(ByteStream& stream, std::string_view endTag) : stream_(stream), endTag_(endTag) {}

    /// The next chunk, lent until the next call, with a zero behind it; the last one ends with the
    /// document. False at the end, or when a single element is too large.
    bool next(std::string_view& chunk);

    /// Whether the document was given out whole.
    bool atEnd() const { return ended_ && taken_ == filled_; }

private:
    bool fill();
    size_t lastCut() const;

    ByteStream& stream_;
    const std::string_view endTag_;
    std::vector<char> buffer_;
    size_t taken_ = 0;   // where the chunk given out last ended
    size_t filled_ = 0;  // bytes in the buffer
    char covered_ = 0;   // the byte at `taken_`, where a zero stands meanwhile
    bool ended_ = false;
};

}  // namespace intake
