#pragma once

#include <string>
#include <vector>

#include "formats/json/JsonDocument.h"
#include "pipeline/RequestRecord.h"
#include "pipeline/RowRange.h"
#include "pipeline/RowsLimit.h"
#include "pipeline/TargetModeWriter.h"
#include "readers/json/JsonWalker.h"

namespace intake {

/// Writes rows of a document as the records of a target mode: those that were selected in it, or
/// those that it hands over while it is read. Made for one request; worker thread.
class JsonRecords final : public TargetModeWriter {
public:
    using Nodes = std::vector<JsonDocument::Node>;

    /// All are borrowed and outlive this object; the script is appended to.
    JsonRecords(const JsonDocument& document, const RequestRecord& request, std::string& script,
                RowsLimit limit = RowsLimit("JSON: The rows"));

    /// Writes the requested ones of these rows in the request's target mode, and nothing in a mode
    /// that does not exist. Throws RowsTooLarge.
    void write(const Nodes& rows);

    /// Writes one requested row; throws RowsTooLarge. After the last one, `finish` tells how many
    /// rows there were.
    void take(JsonDocument::Node row);
    void finish(int64_t rowCount);

private:
    using Node = JsonDocument::Node;

    static constexpr int64_t SAMPLE = 1000;  // records that tell how long the script will be

    void writeTable() override;
    void writeArray() override;
    void writeStructures() override;
    void writeFieldArray() override;
    void writeSharedMemory() override;
    void writeCount(const char* separator, int64_t count);
    void makeRoomForAll();

    const JsonDocument& document_;
    const RequestRecord& request_;
    std::string& script_;
    const RowsLimit limit_;
    const size_t start_;  // of the records within the script
    JsonWalker walker_;
    Node row_ = JsonDocument::ROOT;  // the one that is being written
    size_t sampleStart_ = 0;         // the place in the source where the first row ends
    int64_t place_ = 0;              // of that among the rows delivered
};

}  // namespace intake
