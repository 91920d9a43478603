#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "formats/xml/XmlTree.h"
#include "formats/xml/xml_load.h"
#include "platform/XmlDocument.h"
#include "platform/linux/xml/LibxmlXPath.h"
#include "platform/linux/xml/StreamedRows.h"

namespace intake {

/// An XML document by libxml2.
class LibxmlDocument final : public XmlDocument {
public:
    /// `endMark` outlives this object.
    LibxmlDocument(TextEncoding encoding, const EndMark& endMark);

    void takeRowsWhileLoading(const XmlRowsWanted& wanted, const XmlRowTaker& taker) override;
    std::optional<size_t> rowsFound() override { return rowsFound_; }
    size_t sourceSize() override { return sourceSize_; }

    bool loadFile(const std::string& path) override;
    bool loadText(std::string_view text) override;

    /// As loadText, of a text whose charset was told beside it, unless that is empty. Throws
    /// PlatformError when it has more nodes than it may have.
    bool loadText(std::string_view text, const std::string& charset, uint64_t mostNodes);

    std::string parseErrorReason() override;

    void setSelectionNamespaces(const std::string& declarations) override;
    bool selectNodes(const std::string& expression) override;
    size_t selectedCount() override;
    Node selected(size_t position) override;
    void setKeyExpression(const std::string& expression) override;
    bool appendKeyText(Node row, std::string& out) override;

    void forEachChild(Node parent, const Visit& visit) override;
    bool isElement(Node node) override;
    bool hasElements(Node node) override;
    void appendName(Node node, std::string& out) override;
    void appendText(Node node, std::string& out) override;
    void appendMarkup(Node node, std::string& out) override;
    bool attribute(Node element, const std::string& name, std::string& value) override;

    Node rootElement() override;
    Node appendElement(Node parent, const std::string& name) override;
    void setText(Node element, const std::string& text) override;

private:
    using Append = void (*)(const xmlNode*, std::string&);

    bool load(const ByteSource& source, const std::string& charset, uint64_t mostNodes);
    bool replace(LoadedXml loaded);
    XmlTree* treeAt(xmlNode* parent);
    XPathSelection select(const XPathExpression& expression, xmlNode* from);

    /// Appends what `write` writes, in this document's encoding.
    void append(Append write, Node node, std::string& out) const;

    /// Turns what stands from `start` on into this document's encoding.
    void encode(std::string& text, size_t start) const;

    const TextEncoding encoding_;
    const EndMark& endMark_;
    std::string reason_;
    std::unique_ptr<StreamedRows> rows_;  // null when none are to be taken while loading
    KeptAttributes attributes_ = KeptAttributes::ALL;
    std::optional<size_t> rowsFound_;
    size_t sourceSize_ = 0;

    // Destroyed from below: a selection goes before what it was made from.
    XmlDoc document_;              // without nodes when empty
    std::optional<XmlTree> tree_;  // adds to that, once anything was added in its arena
    LibxmlXPath xpath_;
    XPathSelection selection_;
    XPathExpression key_;
};

}  // namespace intake
