#include "readers/xml/XmlRecords.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>

#include "pipeline/narrow_text.h"
#include "pipeline/script_text.h"
#include "readers/xml/payload.h"
#include "readers/xml/xml_source.h"

namespace intake {

namespace {

constexpr int32_t OUTPUT_MARKUP = 1;
constexpr size_t LARGE = size_t{1} << 20;  // of a script; from there on its growth is looked after

/// What the trace calls the modes.
constexpr std::array<const char*, 5> MODES{"DATATABLE", "DATAARRAY", "DATASTRUCTURE",
                                           "DATAFIELDARRAY", "SHAREDMEM"};

bool isMode(int32_t mode) {
    return mode >= 0 && static_cast<size_t>(mode) < MODES.size();
}

}  // namespace

XmlRecords::XmlRecords(XmlDocument& document, const RequestRecord& request, ReaderLogger& logger,
                       std::string& script, RowsLimit limit)
    : document_(document),
      request_(request),
      logger_(logger),
      script_(script),
      limit_(limit),
      start_(script.size()) {}

void XmlRecords::takeWhileLoading() {
    document_.takeRowsWhileLoading(wanted(),
                                   {[this](Node row) { takeRow(row); }, [this] { forgetRows(); }});
}

XmlRowsWanted XmlRecords::wanted() const {
    constexpr int64_t ANY_NUMBER = std::numeric_limits<int64_t>::max();
    const RowRange rows(request_, ANY_NUMBER);
    XmlRowsWanted wanted;
    wanted.namespaces = toUtf8(request_.namespaces, request_.encoding);
    wanted.expression = toUtf8(request_.xpath, request_.encoding);
    if (needsKey()) {
        wanted.key = toUtf8(request_.key, request_.encoding);
    }
    wanted.needsMarkup = request_.targetOutFormat == OUTPUT_MARKUP;
    wanted.first = rows.first();
    wanted.end = rows.end;
    return wanted;
}

void XmlRecords::takeRow(Node row) {
    row_ = row;
    writeInMode(request_.targetMode);
    limit_.check(script_);
    ++place_;
    if (script_.size() >= LARGE && !hasRoom_) {
        makeRoom();
    }
}

/// A large script would otherwise be copied several times as it grows. Few are larger than their
/// document, and room that is not touched costs nothing.
void XmlRecords::makeRoom() {
    hasRoom_ = true;
    try {
        script_.reserve(std::min(document_.sourceSize(), limit_.bytes()));
    } catch (const std::bad_alloc&) {
        return;  // it may never be needed
    }
}

void XmlRecords::forgetRows() {
    script_.resize(start_);
    place_ = rowsWithoutKey_ = 0;
}

void XmlRecords::write() {
    const std::optional<size_t> taken = document_.rowsFound();
    const auto count = static_cast<int64_t>(taken ? *taken : document_.selectedCount());
    const RowRange rows(request_, count);
    if (rows.from >= count || !isMode(request_.targetMode)) {
        return;
    }
    logger_.Write(LOG_DEBUG,
                  "Before " + std::string(MODES[static_cast<size_t>(request_.targetMode)]) + "\n");
    if (!taken) {
        writeSelected(rows);
    }
    writeEnd(rows);
}

void XmlRecords::writeSelected(const RowRange& rows) {
    if (needsKey()) {
        document_.setKeyExpression(toUtf8(request_.key, request_.encoding));
    }
    for (int64_t row = rows.first(); row < rows.end; ++row) {
        takeRow(document_.selected(static_cast<size_t>(row)));
    }
}

/// Writes what needs the number of rows.
void XmlRecords::writeEnd(const RowRange& rows) {
    if (request_.targetMode == DATA_FIELD_ARRAY) {
        std::string head;
        appendRangeHead(head, request_.table, rows.count());
        script_.insert(start_, head);
        script_.append("; ");
    }
    if (request_.targetMode == DATA_FIELD_ARRAY || request_.targetMode == DATA_ARRAY) {
        appendRecordCount(script_, request_.varsPrefix, rows.count());
    }
    reportRowsWithoutKey(rows);
}

bool XmlRecords::needsKey() const {
    return request_.targetMode == DATA_TABLE ||
           (request_.targetMode == DATA_STRUCTURE && request_.table.empty());
}

void XmlRecords::writeTable() {
    const size_t start = script_.size();
    script_.append(request_.table).append("[");
    if (!writeKey()) {
        script_.resize(start);
        return;
    }
    script_.append("]=");
    writeRecord();
}

void XmlRecords::writeArray() {
    appendElementHead(script_, request_.table, place_);
    writeRecord();
}

void XmlRecords::writeStructures() {
    if (!request_.table.empty()) {
        script_.append(request_.table);
    } else if (!writeKey()) {
        return;
    }
    script_.append("={");
    writeFields();
    script_.append("};");
}

void XmlRecords::writeFieldArray() {
    script_.append(place_ == 0 ? "\"\"" : ",\"\"");
    writeValue(row_);
    script_.append("\"\"");
}

void XmlRecords::writeSharedMemory() {
    if (place_ != 0) {
        script_.append(request_.fieldsDelimiter);
    }
    writeValue(row_);
}

void XmlRecords::writeRecord() {
    script_.append("{{");
    writeFields();
    script_.append("};};");
}

void XmlRecords::writeFields() {
    if (isPayload(request_)) {
        return writePayloadRow(document_, row_, script_);
    }
    document_.forEachChild(row_, [this](Node child) {
        document_.appendName(child, script_);
        script_.append("=\"");
        writeValue(child);
        script_.append("\";");
        limit_.check(script_);  // a row may have any number of them
    });
}

void XmlRecords::writeValue(Node node) {
    if (request_.targetOutFormat == OUTPUT_MARKUP) {
        document_.appendMarkup(node, script_);
    } else {
        document_.appendText(node, script_);
    }
}

bool XmlRecords::writeKey() {
    const bool found = document_.appendKeyText(row_, script_);
    rowsWithoutKey_ += found ? 0 : 1;
    return found;
}

void XmlRecords::reportRowsWithoutKey(const RowRange& rows) {
    if (rowsWithoutKey_ != 0) {
        logger_.Write(LOG_WARNING, "XML: " + std::to_string(rowsWithoutKey_) + " of " +
                                       std::to_string(rows.end - rows.first()) +
                                       " rows left out: \"" + request_.key +
                                       "\" selects nothing in them\n");
    }
}

}  // namespace intake
