#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "formats/source/ByteSource.h"
#include "formats/source/EndMark.h"
#include "formats/xml/ScannedElements.h"
#include "formats/xml/XmlDoc.h"
#include "formats/xml/XmlTree.h"
#include "formats/xml/scan_document.h"

namespace intake {

/// Builds the tree of a whole document, in an arena, while it is scanned: the same as the parser
/// would give, but for attributes that are unwanted. Made for one document; belongs to one thread.
class TreeReader {
public:
    /// Refuses more nodes than `mostNodes`, and perhaps a few less; attributes that are left out
    /// count, too. Throws std::bad_alloc.
    TreeReader(uint64_t mostNodes, KeptAttributes attributes);

    // What the scanner tells. Leaves throw std::length_error when there are too many nodes.
    bool startElement(const XmlTag& tag);
    void endElement();
    void text(std::string_view text);
    void section(std::string_view text);
    void comment(std::string_view text);
    void instruction(std::string_view target, const std::string_view* data);

    /// The document, which is complete.
    XmlDoc release() { return std::move(document_); }

private:
    XmlDoc document_;
    XmlArena& arena_;
    XmlTree tree_;
    ScannedElements elements_;
    const bool withAttributes_;
};

/// Null when the document is for the parser to read: see scanDocument. Throws what the source
/// throws, and std::bad_alloc.
XmlDoc scanTree(const ByteSource& source, const std::string& charset, const EndMark& endMark,
                uint64_t mostNodes, KeptAttributes attributes = KeptAttributes::ALL,
                size_t windowSize = USUAL_WINDOW);

}  // namespace intake
