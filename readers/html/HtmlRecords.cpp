#include "readers/html/HtmlRecords.h"

#include <algorithm>

#include "pipeline/narrow_text.h"
#include "pipeline/script_text.h"

namespace intake {

namespace {

bool needsKey(int32_t targetMode) {
    return targetMode == DATA_TABLE || targetMode == DATA_STRUCTURE ||
           targetMode == DATA_FIELD_ARRAY || targetMode == SHARED_MEMORY;
}

}  // namespace

HtmlRecords::HtmlRecords(HtmlTable& table, const RequestRecord& request, std::string& script)
    : table_(table),
      request_(request),
      script_(script),
      rowCount_(static_cast<int64_t>(table.rowCount())),
      rows_(request, rowCount_) {}

bool HtmlRecords::write(std::string& error) {
    if (rowCount_ == 0) {
        return true;
    }
    readNames();
    if (needsKey(request_.targetMode) && !findKeyColumn(error)) {
        return false;
    }
    if (rows_.from >= rowCount_) {
        return true;
    }
    writeInMode(request_.targetMode);
    const bool isTooLarge = limit_.isExceededBy(script_);
    error += isTooLarge ? limit_.error() : "";
    return !isTooLarge;
}

void HtmlRecords::readNames() {
    names_.resize(table_.cellCount(0));
    for (size_t cell = 0; cell < names_.size(); ++cell) {
        table_.appendCellText(0, cell, names_[cell]);
        narrowFrom(names_[cell], 0, request_.encoding);
    }
}

bool HtmlRecords::findKeyColumn(std::string& error) {
    const auto found = std::find(names_.begin(), names_.end(), request_.key);
    if (found == names_.end()) {
        error += "HTML: Could not find KEY \"" + request_.key + "\" in the first row of the table";
        return false;
    }
    keyColumn_ = static_cast<size_t>(found - names_.begin());
    return true;
}

void HtmlRecords::writeTable() {
    forEachRow([this](size_t row, int64_t) {
        script_.append(request_.table).append("[");
        writeKey(row);
        script_.append("]=");
        writeRecord(row);
    });
}

void HtmlRecords::writeArray() {
    forEachRow([this](size_t row, int64_t place) {
        appendElementHead(script_, request_.table, place);
        writeRecord(row);
    });
    writeCount();
}

void HtmlRecords::writeStructures() {
    forEachRow([this](size_t row, int64_t) {
        writeKey(row);
        script_.append("={");
        writeFields(row);
        script_.append("};\r\r\n");
    });
}

void HtmlRecords::writeFieldArray() {
    appendRangeHead(script_, request_.table, rows_.count());
    forEachRow([this](size_t row, int64_t) {
        script_.append("\"\"");
        writeKey(row);
        script_.append(isLast(row) ? "\"\"" : "\"\",");
    });
    script_.append("; ");
    writeCount();
}

void HtmlRecords::writeSharedMemory() {
    forEachRow([this](size_t row, int64_t) {
        writeKey(row);
        if (!isLast(row)) {
            script_.append(request_.fieldsDelimiter);
        }
    });
}

void HtmlRecords::writeRecord(size_t row) {
    script_.append("{{");
    writeFields(row);
    script_.append("};};");
}

void HtmlRecords::writeFields(size_t row) {
    const size_t cells = std::min(table_.cellCount(row), names_.size());
    for (size_t cell = 0; cell < cells; ++cell) {
        script_.append(names_[cell]).append("=\"\"");
        const size_t start = script_.size();
        table_.appendCellText(row, cell, script_);
        narrowFrom(script_, start, request_.encoding);
        script_.append("\"\";");
    }
}

void HtmlRecords::writeKey(size_t row) {
    if (keyColumn_ < table_.cellCount(row)) {
        table_.appendCellKey(row, keyColumn_, script_);
    }
}

/// Without the prefix, unlike the other readers.
void HtmlRecords::writeCount() {
    appendRecordCount(script_, "", rows_.count());
}

}  // namespace intake
