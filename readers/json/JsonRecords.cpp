#include "readers/json/JsonRecords.h"

#include <algorithm>

#include "pipeline/script_text.h"

namespace intake {

using Role = JsonWalker::Role;

JsonRecords::JsonRecords(const JsonDocument& document, const Nodes& nodes,
                         const RequestRecord& request, std::string& script)
    : document_(document),
      nodes_(nodes),
      request_(request),
      script_(script),
      rows_(request, static_cast<int64_t>(nodes.size())),
      walker_(document, script) {}

void JsonRecords::write() {
    writeInMode(request_.targetMode);
}

void JsonRecords::writeTable() {
    forEachRecord([this](Node record, int64_t) {
        const Node key = document_.find(record, request_.key);
        if (key == JsonDocument::NONE) {
            return;
        }
        script_.append(request_.table).append("[").append(document_.asString(key)).append("]={");
        walker_.walk(record, "", Role::ELEMENT);
        script_.append("};");
    });
}

void JsonRecords::writeArray() {
    forEachRecord([this](Node record, int64_t place) {
        appendElementHead(script_, request_.table, place);
        if (document_.isFlatArray(record)) {
            walker_.writeElements(record);
            script_.append(";");
        } else {
            script_.append("{");
            walker_.walk(record, "", Role::ELEMENT);
            script_.append("};");
        }
    });
    writeCount("; ");
}

void JsonRecords::writeStructures() {
    forEachRecord([this](Node record, int64_t) {
        if (request_.key.empty()) {
            walker_.walk(record, request_.table, Role::MEMBER);
        } else if (const Node key = document_.find(record, request_.key);
                   key != JsonDocument::NONE) {
            walker_.walk(record, document_.asString(key), Role::MEMBER);
        }
    });
    writeCount(";");
}

void JsonRecords::writeFieldArray() {
    appendRangeHead(script_, request_.table, rows_.count());
    forEachRecord([this](Node record, int64_t place) {
        appendFramed(script_, document_.asString(record));
        script_.append(isLast(place) ? "" : ",");
    });
    writeCount("; ");
}

void JsonRecords::writeSharedMemory() {
    forEachRecord([this](Node record, int64_t place) {
        script_.append(document_.asString(record));
        if (!isLast(place)) {
            script_.append(request_.fieldsDelimiter);
        }
    });
}

/// A large script would otherwise be copied several times as it grows.
void JsonRecords::makeRoomForAll() {
    const auto records = static_cast<size_t>(rows_.end - rows_.first());
    const size_t likely = script_.size() / SAMPLE * records / 4 * 5;
    script_.reserve(std::min(likely, 2 * document_.sourceSize()));
}

void JsonRecords::writeCount(const char* separator) {
    script_.append(separator);
    appendRecordCount(script_, request_.varsPrefix, rows_.count());
}

}  // namespace intake
