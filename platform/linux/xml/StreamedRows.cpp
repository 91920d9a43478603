#include "platform/linux/xml/StreamedRows.h"

#include <stdexcept>

#include "formats/text/trim.h"
#include "formats/xml/RowReader.h"
#include "formats/xml/scan_document.h"
#include "formats/xml/xml_load.h"
#include "formats/xml/xml_text.h"
#include "platform/PlatformError.h"
#include "platform/linux/xml/LibxmlXPath.h"

namespace intake {

namespace {

/// The prefixes of a sequence of xmlns declarations. Throws PlatformError when they are none.
PrefixLookup prefixesOf(const std::string& declarations) {
    if (trimmed(declarations, XML_SPACE).empty()) {
        return [](std::string_view) { return std::nullopt; };
    }
    const std::shared_ptr<xmlDoc> declared = parseDeclarations(declarations);
    return [declared](std::string_view prefix) -> std::optional<std::string> {
        const xmlNs* each = xmlDocGetRootElement(declared.get())->nsDef;
        while (each != nullptr && (each->prefix == nullptr || viewOf(each->prefix) != prefix)) {
            each = each->next;
        }
        return each == nullptr ? std::nullopt : std::optional(std::string(viewOf(each->href)));
    };
}

/// Whether a path finds elements, from which alone a key's path may lead on.
bool findsElements(const PlainPath& path) {
    return path.steps.back().finds == PlainStep::Finds::ELEMENTS;
}

std::optional<XmlRowQuery> queryOf(const XmlRowsWanted& wanted) {
    const PrefixLookup uriOf = prefixesOf(wanted.namespaces);
    std::optional<PlainPath> path = parsePlainPath(wanted.expression, PathStart::DOCUMENT, uriOf);
    std::optional<PlainPath> key;
    if (wanted.key) {
        key = parsePlainPath(*wanted.key, PathStart::ROW, uriOf);
    }
    if (!path || (wanted.key && (!key || !findsElements(*path)))) {
        return std::nullopt;
    }
    return XmlRowQuery{std::move(*path), std::move(key), wanted.needsMarkup, wanted.first,
                       wanted.end};
}

/// Says that a document is being read, however that ends.
class Reading {
public:
    explicit Reading(bool& isReading) : isReading_(isReading) { isReading_ = true; }
    ~Reading() { isReading_ = false; }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

private:
    bool& isReading_;
};

}  // namespace

StreamedRows::StreamedRows(XmlRowQuery query, XmlRowTaker taker)
    : query_(std::move(query)), taker_(std::move(taker)) {
    if (query_.key) {
        keyMatch_.emplace(*query_.key);
    }
}

std::unique_ptr<StreamedRows> StreamedRows::plan(const XmlRowsWanted& wanted,
                                                 const XmlRowTaker& taker) {
    try {
        std::optional<XmlRowQuery> query = queryOf(wanted);
        return query ? std::unique_ptr<StreamedRows>(new StreamedRows(std::move(*query), taker))
                     : nullptr;
    } catch (const PlatformError&) {
        return nullptr;  // which is told where nodes are selected
    }
}

std::optional<size_t> StreamedRows::read(const ByteSource& source, const std::string& charset,
                                         const EndMark& endMark, uint64_t mostNodes) {
    const Reading reading(isReading_);
    try {
        const std::optional<size_t> found = readAll(source, charset, endMark, mostNodes);
        if (found) {
            return found;
        }
    } catch (const std::length_error&) {
        // Too many nodes, or too much work: the parser and the library have limits of their own,
        // and words for them.
    }
    taker_.forget();
    return std::nullopt;
}

std::optional<size_t> StreamedRows::readAll(const ByteSource& source, const std::string& charset,
                                            const EndMark& endMark, uint64_t mostNodes) {
    if (source.size() > LARGEST_XML) {
        return std::nullopt;
    }
    const RowReader::Tell tell = [this](xmlNode* row) { taker_.take(row); };
    RowReader rows(query_, tell, mostNodes);
    if (!scanDocument(source, charset, endMark, rows) ||
        rows.mostAtATime() >= MOST_NODES_OF_A_SET) {
        return std::nullopt;
    }
    return static_cast<size_t>(rows.found());
}

const xmlNode* StreamedRows::keyOf(const xmlNode* row) {
    return findFirst(*keyMatch_, *query_.key, row);
}

}  // namespace intake
