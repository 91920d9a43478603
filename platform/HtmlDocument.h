#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "formats/source/EndMark.h"
#include "platform/KeptConnections.h"

namespace intake {

/// The rows of one TABLE element: its own rows, head first, foot last, and not those of tables
/// inside its cells. Does not outlive its document. What fails throws PlatformError.
class HtmlTable {
public:
    virtual ~HtmlTable() = default;

    virtual size_t rowCount() = 0;

    /// The cells of a row as they stand, TH and TD alike.
    virtual size_t cellCount(size_t row) = 0;

    /// Appends a cell's inner text in UTF-8.
    virtual void appendCellText(size_t row, size_t cell, std::string& out) = 0;

    /// The same by the system's plain conversion, which keys are written with.
    virtual void appendCellKey(size_t row, size_t cell, std::string& out) = 0;
};

/// A parsed HTML page. Made and used on one worker thread. What fails throws PlatformError.
class HtmlDocument {
public:
    /// An element, lent by the document: until the call ends where it is handed to a callback,
    /// otherwise until the document goes. Null where there is none.
    using Element = void*;

    using Matches = std::function<bool(Element)>;

    virtual ~HtmlDocument() = default;

    /// The first element with that id, which is in UTF-8.
    virtual Element elementById(const std::string& id) = 0;

    virtual bool isTable(Element element) = 0;

    /// The first TABLE in document order below an element, or in the document where it is null.
    virtual Element firstTable(Element ancestor) = 0;

    virtual Element parent(Element element) = 0;

    /// The first element that matches, in document order: an element comes before its children,
    /// and these before its next sibling. Must take pages that are nested deeply.
    virtual Element findElement(const Matches& matches) = 0;

    /// Whether the whole class attribute is this text, in UTF-8. An element without one has an
    /// empty one.
    virtual bool classNameEquals(Element element, std::string_view className) = 0;

    /// Whether the whole inner text is this text, in UTF-8. Gives up at the first difference.
    virtual bool innerTextEquals(Element element, std::string_view text) = 0;

    /// The rows of a TABLE element.
    virtual std::unique_ptr<HtmlTable> table(Element table) = 0;
};

/// Opens pages. Process-wide; any thread.
class HtmlServices {
public:
    virtual ~HtmlServices() = default;

    /// Fetches a URL or reads a local path, and parses it. Null, and the reason, when the source
    /// cannot be opened; throws PlatformError when what it holds cannot be made a document. Once
    /// `endMark` is set, a transfer gives up soon.
    virtual std::unique_ptr<HtmlDocument> open(const std::string& source,
                                               KeptConnections& connections, const EndMark& endMark,
                                               std::string& reason) = 0;
};

}  // namespace intake
