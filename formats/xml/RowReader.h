#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "formats/xml/PathMatch.h"
#include "formats/xml/ScannedElements.h"
#include "formats/xml/XmlArena.h"
#include "formats/xml/XmlRowQuery.h"
#include "formats/xml/XmlTag.h"
#include "formats/xml/XmlTree.h"

namespace intake {

/// Finds the rows of a document while it is scanned. Each is built as a tree, which is lent to
/// `tell` once it is whole; the next row uses its memory again. Rows within a row are told behind
/// it. Made for one document; belongs to one thread; throws what `tell` throws.
class RowReader {
public:
    using Tell = std::function<void(xmlNode*)>;

    /// Both outlive this object. Refuses documents of more nodes than `mostNodes`.
    RowReader(const XmlRowQuery& query, const Tell& tell, uint64_t mostNodes);

    // What the scanner tells. Leaves throw std::length_error when there are too many nodes.
    bool startElement(const XmlTag& tag);
    void endElement();
    void text(std::string_view text);
    void section(std::string_view text);
    void comment(std::string_view text);
    void instruction(std::string_view target, const std::string_view* data);

    /// How many rows were found, told or not.
    int64_t found() const { return found_; }

    /// No fewer nodes than an evaluation in the document's tree, of the path or of a key, would
    /// hold at a time.
    uint64_t mostAtATime() const;

private:
    struct Row {
        xmlNode* node;  // null when it is not wanted
        size_t depth;   // zero when it is over
        bool isFound;
    };

    bool isBuilding() const { return rowDepth_ != 0; }
    bool isWanted(int64_t index) const { return index >= query_.first && index < query_.end; }
    void addRow(bool isBuilt);
    void buildElement(const XmlTag& tag);
    void tellAttributes(const XmlTag& tag);
    template <class Make>
    void tellLoose(Make make);
    xmlNode* makeText(std::string_view text);
    void endRows();

    const XmlRowQuery& query_;
    const Tell& tell_;
    const bool isLate_;
    const bool needsAttributes_;
    const bool looksInside_;  // of rows, for keys or predicates
    XmlArena arena_;
    XmlTree tree_;
    ScannedElements elements_;
    PathMatch match_;
    std::vector<Row> rows_;     // that began since no row was open
    std::vector<size_t> open_;  // those that are not over
    size_t rowDepth_ = 0;  // of the row that is being built, without those inside it; zero for none
    int64_t found_ = 0;
    uint64_t nodesBefore_ = 0;  // the row that is being built
    uint64_t largestRow_ = 0;   // in nodes, if they are looked for
};

}  // namespace intake
