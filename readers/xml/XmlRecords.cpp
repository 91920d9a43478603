#include "readers/xml/XmlRecords.h"

#include "pipeline/narrow_text.h"
#include "pipeline/script_text.h"
#include "readers/xml/payload.h"
#include "readers/xml/xml_source.h"

namespace intake {

namespace {

constexpr int32_t OUTPUT_MARKUP = 1;

}  // namespace

XmlRecords::XmlRecords(XmlDocument& document, const RequestRecord& request, ReaderLogger& logger,
                       std::string& script)
    : document_(document),
      request_(request),
      logger_(logger),
      script_(script),
      selected_(static_cast<int64_t>(document.selectedCount())),
      rows_(request, selected_) {}

void XmlRecords::write() {
    if (rows_.from < selected_) {
        writeInMode(request_.targetMode);
    }
}

void XmlRecords::writeTable() {
    logger_.Write(LOG_DEBUG, "Before DATATABLE\n");
    setKeyExpression();
    forEachRow([this](Node row, int64_t) {
        const size_t start = script_.size();
        script_.append(request_.table).append("[");
        if (!writeKey(row)) {
            script_.resize(start);
            return;
        }
        script_.append("]=");
        writeRecord(row);
    });
    reportRowsWithoutKey();
}

void XmlRecords::writeArray() {
    logger_.Write(LOG_DEBUG, "Before DATAARRAY\n");
    forEachRow([this](Node row, int64_t place) {
        appendElementHead(script_, request_.table, place);
        writeRecord(row);
    });
    writeCount();
}

void XmlRecords::writeStructures() {
    logger_.Write(LOG_DEBUG, "Before DATASTRUCTURE\n");
    const bool namedByKey = request_.table.empty();
    if (namedByKey) {
        setKeyExpression();
    }
    forEachRow([this, namedByKey](Node row, int64_t) {
        if (!namedByKey) {
            script_.append(request_.table);
        } else if (!writeKey(row)) {
            return;
        }
        script_.append("={");
        writeFields(row);
        script_.append("};");
    });
    reportRowsWithoutKey();
}

void XmlRecords::writeFieldArray() {
    logger_.Write(LOG_DEBUG, "Before DATAFIELDARRAY\n");
    appendRangeHead(script_, request_.table, rows_.count());
    forEachRow([this](Node row, int64_t place) {
        script_.append("\"\"");
        writeValue(row);
        script_.append(isLast(place) ? "\"\"" : "\"\",");
    });
    script_.append("; ");
    writeCount();
}

void XmlRecords::writeSharedMemory() {
    logger_.Write(LOG_DEBUG, "Before SHAREDMEM\n");
    forEachRow([this](Node row, int64_t place) {
        writeValue(row);
        if (!isLast(place)) {
            script_.append(request_.fieldsDelimiter);
        }
    });
}

void XmlRecords::writeRecord(Node row) {
    script_.append("{{");
    writeFields(row);
    script_.append("};};");
}

void XmlRecords::writeFields(Node row) {
    if (isPayload(request_)) {
        return writePayloadRow(document_, row, script_);
    }
    document_.forEachChild(row, [this](Node child) {
        document_.appendName(child, script_);
        script_.append("=\"");
        writeValue(child);
        script_.append("\";");
    });
}

void XmlRecords::writeValue(Node node) {
    if (request_.targetOutFormat == OUTPUT_MARKUP) {
        document_.appendMarkup(node, script_);
    } else {
        document_.appendText(node, script_);
    }
}

void XmlRecords::writeCount() {
    appendRecordCount(script_, request_.varsPrefix, rows_.count());
}

void XmlRecords::setKeyExpression() {
    document_.setKeyExpression(toUtf8(request_.key, request_.encoding));
}

bool XmlRecords::writeKey(Node row) {
    const bool found = document_.appendKeyText(row, script_);
    rowsWithoutKey_ += found ? 0 : 1;
    return found;
}

void XmlRecords::reportRowsWithoutKey() {
    if (rowsWithoutKey_ != 0) {
        logger_.Write(LOG_WARNING, "XML: " + std::to_string(rowsWithoutKey_) + " of " +
                                       std::to_string(rows_.end - rows_.first()) +
                                       " rows left out: \"" + request_.key +
                                       "\" selects nothing in them\n");
    }
}

}  // namespace intake
