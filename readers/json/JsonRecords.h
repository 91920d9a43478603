#pragma once

#include <string>
#include <vector>

#include "formats/json/JsonDocument.h"
#include "pipeline/RequestRecord.h"
#include "pipeline/RowRange.h"
#include "pipeline/TargetModeWriter.h"
#include "readers/json/JsonWalker.h"

namespace intake {

/// Writes the requested rows of a node set as the records of a target mode. Made for one request;
/// worker thread.
class JsonRecords final : public TargetModeWriter {
public:
    using Nodes = std::vector<JsonDocument::Node>;

    /// All are borrowed and outlive this object; the script is appended to.
    JsonRecords(const JsonDocument& document, const Nodes& nodes, const RequestRecord& request,
                std::string& script);

    /// Writes the records in the request's target mode, and nothing in a mode that does not exist.
    void write();

private:
    using Node = JsonDocument::Node;

    static constexpr int64_t SAMPLE = 1000;  // records that tell how long the script will be

    void writeTable() override;
    void writeArray() override;
    void writeStructures() override;
    void writeFieldArray() override;
    void writeSharedMemory() override;
    void writeCount(const char* separator);

    /// Calls `each` with every record and its place among the delivered ones, from 0.
    template <class Each>
    void forEachRecord(Each each) {
        for (int64_t row = rows_.first(); row < rows_.end; ++row) {
            each(nodes_[static_cast<size_t>(row)], row - rows_.first());
            if (row - rows_.first() == SAMPLE) {
                makeRoomForAll();
            }
        }
    }

    void makeRoomForAll();

    bool isLast(int64_t place) const { return rows_.first() + place + 1 == rows_.end; }

    const JsonDocument& document_;
    const Nodes& nodes_;
    const RequestRecord& request_;
    std::string& script_;
    const RowRange rows_;
    JsonWalker walker_;
};

}  // namespace intake
