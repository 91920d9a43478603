#include "readers/json/JsonRecords.h"

#include <algorithm>
#include <new>

#include "pipeline/RowRange.h"
#include "pipeline/script_text.h"

namespace intake {

using Role = JsonWalker::Role;

JsonRecords::JsonRecords(const JsonDocument& document, const RequestRecord& request,
                         std::string& script, RowsLimit limit)
    : document_(document),
      request_(request),
      script_(script),
      limit_(limit),
      start_(script.size()),
      walker_(document, script) {}

void JsonRecords::write(const Nodes& rows) {
    const auto count = static_cast<int64_t>(rows.size());
    const RowRange range(request_, count);
    for (int64_t row = range.first(); row < range.end; ++row) {
        take(rows[static_cast<size_t>(row)]);
    }
    finish(count);
}

void JsonRecords::take(Node row) {
    row_ = row;
    writeInMode(request_.targetMode);
    limit_.check(script_);
    ++place_;
    if (place_ == 1) {
        sampleStart_ = document_.sourceOffsetBehind(row);
    }
    if (place_ == SAMPLE) {
        makeRoomForAll();
    }
}

void JsonRecords::finish(int64_t rowCount) {
    if (script_.capacity() / 4 > script_.size()) {
        script_.shrink_to_fit();  // the guess was wrong
    }
    const int64_t count = RowRange(request_, rowCount).count();
    switch (request_.targetMode) {
        case DATA_ARRAY:
            return writeCount("; ", count);
        case DATA_STRUCTURE:
            return writeCount(";", count);
        case DATA_FIELD_ARRAY: {
            std::string head;
            appendRangeHead(head, request_.table, count);
            script_.insert(start_, head);
            return writeCount("; ", count);
        }
        default:
            return;
    }
}

void JsonRecords::writeTable() {
    const Node key = document_.find(row_, request_.key);
    if (key == JsonDocument::NONE) {
        return;
    }
    script_.append(request_.table).append("[").append(document_.asString(key)).append("]={");
    walker_.walk(row_, "", Role::ELEMENT);
    script_.append("};");
}

void JsonRecords::writeArray() {
    appendElementHead(script_, request_.table, place_);
    if (document_.isFlatArray(row_)) {
        walker_.writeElements(row_);
        script_.append(";");
    } else {
        script_.append("{");
        walker_.walk(row_, "", Role::ELEMENT);
        script_.append("};");
    }
}

void JsonRecords::writeStructures() {
    if (request_.key.empty()) {
        walker_.walk(row_, request_.table, Role::MEMBER);
    } else if (const Node key = document_.find(row_, request_.key); key != JsonDocument::NONE) {
        walker_.walk(row_, document_.asString(key), Role::MEMBER);
    }
}

void JsonRecords::writeFieldArray() {
    script_.append(place_ == 0 ? "" : ",");
    appendFramed(script_, document_.asString(row_));
}

void JsonRecords::writeSharedMemory() {
    if (place_ != 0) {
        script_.append(request_.fieldsDelimiter);
    }
    script_.append(document_.asString(row_));
}

/// A large script would otherwise be copied several times as it grows. How many rows there are is
/// told by how much of the source the first ones take.
void JsonRecords::makeRoomForAll() {
    const size_t end = document_.sourceOffsetBehind(row_);
    const bool isKnown = end > sampleStart_;  // not where rows are words or empty
    const size_t taken = isKnown ? end - sampleStart_ : document_.sourceSize();
    const size_t rows = std::min<size_t>(static_cast<size_t>(request_.numRows),
                                         document_.sourceSize() / taken * SAMPLE + SAMPLE);
    const size_t likely = script_.size() / SAMPLE * rows / 4 * 5;
    try {
        script_.reserve(std::min(likely, 2 * document_.sourceSize()));
    } catch (const std::bad_alloc&) {
        return;  // it was a guess; other rows may be fewer, and smaller
    }
}

void JsonRecords::writeCount(const char* separator, int64_t count) {
    script_.append(separator);
    appendRecordCount(script_, request_.varsPrefix, count);
}

}  // namespace intake
