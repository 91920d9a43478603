#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "formats/source/EndMark.h"
#include "platform/KeptConnections.h"

namespace intake {

/// The 8-bit encoding of the texts that are taken from a document. ISO-8859-1 writes "?" for what
/// it lacks.
enum class TextEncoding { UTF8, ISO_8859_1 };

/// Where a document comes from: systems make documents for local files and others differently.
enum class XmlSource { LOCAL_FILE, RESPONSE };

/// The rows that are wanted of a document that is still to be loaded.
struct XmlRowsWanted {
    std::string namespaces;          // as for setSelectionNamespaces
    std::string expression;          // as for selectNodes
    std::optional<std::string> key;  // as for setKeyExpression; nothing when no keys are read
    bool needsMarkup = false;        // also of what is in the rows
    int64_t first = 0;               // rows from here up to `end` are wanted
    int64_t end = 0;
};

/// What takes rows while a document is read.
struct XmlRowTaker {
    /// The next row, in document order, lent for this call, in which appendKeyText finds its key.
    std::function<void(void* row)> take;

    /// What was taken is void: the document is read in another way.
    std::function<void()> forget;
};

/// An XML document in memory. Used by one worker thread. Appending calls write into the caller's
/// buffer, so that visiting a node allocates nothing. Where an operation fails in itself (an
/// invalid expression, an impossible name), it throws PlatformError.
///
/// Text is as the host's system gives it without preserving white space: text of white space only
/// is not there, a node's text is trimmed at both ends (CDATA is not), comments and processing
/// instructions are left out; xml:space="preserve" is honoured, and an attribute's value is taken
/// as it is. A document with a DTD is refused.
class XmlDocument {
public:
    /// A node, lent by the document: for the duration of a callback, or, for selected nodes and the
    /// root element, until the document changes.
    using Node = void*;
    using Visit = std::function<void(Node)>;

    virtual ~XmlDocument() = default;

    /// Asks that the next load hands out rows, where the system can do so without keeping the whole
    /// document. Then nothing of the document stays. Otherwise all does but for attributes, which
    /// stay if expression, key or markup may show them.
    virtual void takeRowsWhileLoading(const XmlRowsWanted&, const XmlRowTaker&) {}

    /// How many rows the last load found, also those that were not wanted; nothing when it handed
    /// none out: then they are to be selected.
    virtual std::optional<size_t> rowsFound() { return std::nullopt; }

    /// How many bytes the document had that is being loaded or was loaded last; zero where the
    /// system does not tell.
    virtual size_t sourceSize() { return 0; }

    /// False when the file cannot be read or parsed; parseErrorReason says why.
    virtual bool loadFile(const std::string& path) = 0;

    /// Replaces the document by the parsed text, or empties it when the text does not parse.
    virtual bool loadText(std::string_view text) = 0;

    /// The reason of the last failed load, with its line and column; empty when there was none.
    virtual std::string parseErrorReason() = 0;

    /// The prefixes for expressions, as a sequence of xmlns declarations.
    virtual void setSelectionNamespaces(const std::string& declarations) = 0;

    /// Selects nodes by an XPath 1.0 expression, in document order; false when no node list came
    /// back. An empty document has no nodes.
    virtual bool selectNodes(const std::string& expression) = 0;
    virtual size_t selectedCount() = 0;
    virtual Node selected(size_t position) = 0;

    /// The expression by which appendKeyText finds the key of a row, relative to it.
    virtual void setKeyExpression(const std::string& expression) = 0;

    /// Appends the text of the row's key node; false when the expression selects nothing.
    virtual bool appendKeyText(Node row, std::string& out) = 0;

    virtual void forEachChild(Node parent, const Visit& visit) = 0;
    virtual bool isElement(Node node) = 0;

    /// Whether a node has element children.
    virtual bool hasElements(Node node) = 0;

    /// The qualified name; #text, #cdata-section, #comment, or the target of an instruction.
    virtual void appendName(Node node, std::string& out) = 0;
    virtual void appendText(Node node, std::string& out) = 0;
    virtual void appendMarkup(Node node, std::string& out) = 0;

    /// False when the element has no such attribute.
    virtual bool attribute(Node element, const std::string& name, std::string& value) = 0;

    /// The root element; null when the document is empty.
    virtual Node rootElement() = 0;

    /// Adds an element without content behind the last child.
    virtual Node appendElement(Node parent, const std::string& name) = 0;

    /// Replaces all children by a text, in UTF-8, which keeps its white space.
    virtual void setText(Node element, const std::string& text) = 0;
};

/// A synchronous GET request for an XML document over HTTP, HTTPS or FTP. Operations that fail
/// throw PlatformError.
class XmlRequest {
public:
    virtual ~XmlRequest() = default;

    /// Fails only for a URL that is none. `user` and `password` are null when there are none.
    virtual void open(const std::string& url, const std::string* user,
                      const std::string* password) = 0;
    virtual void setHeader(const std::string& name, const std::string& value) = 0;
    virtual void send() = 0;

    /// Parses the response's body into a document, by the charset that the response names.
    virtual void loadInto(XmlDocument& document) = 0;
};

/// Makes documents and requests. Process-wide; any thread. Both throw PlatformError.
class XmlServices {
public:
    virtual ~XmlServices() = default;

    /// Once `endMark`, which outlives the document, is set, loading and selecting give up soon.
    virtual std::unique_ptr<XmlDocument> createDocument(TextEncoding encoding, XmlSource source,
                                                        const EndMark& endMark) = 0;

    /// Both outlive the request.
    virtual std::unique_ptr<XmlRequest> createRequest(KeptConnections& connections,
                                                      const EndMark& endMark) = 0;
};

}  // namespace intake
