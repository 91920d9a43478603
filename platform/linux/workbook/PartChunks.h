#pragma once

#include <string_view>
#include <vector>

#include "platform/linux/workbook/ByteSource.h"

namespace intake {

/// Unpacks a part in chunks that end with a whole element, so that whoever reads one never meets
/// half a tag. Belongs to one thread.
class PartChunks {
public:
    /// `endTag` is the tag behind which the part may be cut, and outlives this object.
    PartChunks(ByteSource& part, std::string_view endTag) : part_(part), endTag_(endTag) {}

    /// The next chunk, lent until the next call, with a zero behind it; the last one ends with the
    /// part. False at the end, or when a single element is too large.
    bool next(std::string_view& chunk);

    /// Whether the part was given out whole.
    bool atEnd() const { return ended_ && taken_ == filled_; }

private:
    bool fill();
    size_t lastCut() const;

    ByteSource& part_;
    const std::string_view endTag_;
    std::vector<char> buffer_;
    size_t taken_ = 0;   // where the chunk given out last ended
    size_t filled_ = 0;  // bytes in the buffer
    char covered_ = 0;   // the byte at `taken_`, where a zero stands meanwhile
    bool ended_ = false;
};

}  // namespace intake
