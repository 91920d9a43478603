#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "formats/source/ByteSource.h"
#include "formats/source/EndMark.h"
#include "formats/xml/PathMatch.h"
#include "formats/xml/XmlRowQuery.h"
#include "platform/XmlDocument.h"

namespace intake {

/// Hands out the rows of a document while it is read, where plain paths lead to them and to their
/// keys. Owned by a document and used on its thread.
class StreamedRows {
public:
    /// Null when the rows are to be found in another way, also when something is wrong with what is
    /// wanted.
    static std::unique_ptr<StreamedRows> plan(const XmlRowsWanted& wanted,
                                              const XmlRowTaker& taker);

    /// How many rows there are; nothing when the document is to be read in another way, malformed
    /// or not. Then the taker has been told to forget what it took. Throws what source and taker
    /// throw.
    std::optional<size_t> read(const ByteSource& source, const std::string& charset,
                               const EndMark& endMark, uint64_t mostNodes);

    bool isReading() const { return isReading_; }

    /// The node of a row's key, while the row is handed out; null when it has none.
    const xmlNode* keyOf(const xmlNode* row);

private:
    StreamedRows(XmlRowQuery query, XmlRowTaker taker);

    std::optional<size_t> readAll(const ByteSource& source, const std::string& charset,
                                  const EndMark& endMark, uint64_t mostNodes);

    const XmlRowQuery query_;
    const XmlRowTaker taker_;
    std::optional<PathMatch> keyMatch_;
    bool isReading_ = false;
};

}  // namespace intake
