#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "pipeline/ReaderLogger.h"
#include "pipeline/RequestRecord.h"
#include "pipeline/RowsLimit.h"
#include "pipeline/TargetModeWriter.h"
#include "platform/Database.h"
#include "readers/sql/VariantWriter.h"

namespace intake {

/// Writes the requested rows of a recordset as the records of a target mode. Made for one request;
/// worker thread.
class SqlRecords final : public TargetModeWriter {
public:
    /// All are borrowed and outlive this object; script and error are appended to.
    SqlRecords(Recordset& recordset, const RequestRecord& request, ReaderLogger& logger,
               std::string& script, std::string& error,
               RowsLimit limit = RowsLimit("SQL: The rows"));

    /// False, and the reason in the error text, when a field is missing or cannot be taken, or when
    /// the rows become too large. Writes nothing in a mode that does not exist. Throws
    /// PlatformError.
    bool write();

private:
    using WriteRecord = bool (SqlRecords::*)();

    void writeTable() override;
    void writeArray() override;
    void writeStructures() override;
    void writeFieldArray() override;
    void writeSharedMemory() override;

    /// Logs the mode and writes the records of the range one by one. False when one failed.
    bool writeRecords(const char* trace, WriteRecord writeRecord);

    void readNames();
    bool walk(WriteRecord writeRecord);
    void reserveForTheRest();

    bool writeTableRecord();
    bool writeArrayRecord();
    bool writeStructure();
    bool writeFieldArrayValue();
    bool writeSharedMemoryRecord();

    bool writeFields(const char* opening, const char* closing);
    bool writeKey();
    bool writeField(size_t field);

    void putFieldArrayHead();
    void writeCount();

    Recordset& recordset_;
    const RequestRecord& request_;
    ReaderLogger& logger_;
    std::string& script_;
    std::string& error_;
    VariantWriter writer_;
    const RowsLimit limit_;
    const size_t start_;  // where this result begins in the script
    const int64_t from_, end_;
    int64_t walked_ = 0;   // records so far, the skipped ones included
    int64_t written_ = 0;  // of them
    bool succeeded_ = true;
    std::vector<std::string> leads_;  // what stands before each value of a record
    std::optional<size_t> key_;
};

}  // namespace intake
