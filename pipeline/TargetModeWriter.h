#pragma once

#include "pipeline/RequestRecord.h"

namespace intake {

/// What writes a request's records in any target mode: an operation for each. Made for one request;
/// worker thread.
class TargetModeWriter {
public:
    virtual ~TargetModeWriter() = default;

protected:
    /// Writes nothing in a mode that does not exist.
    void writeInMode(int32_t targetMode) {
        switch (targetMode) {
            case DATA_TABLE:
                return writeTable();
            case DATA_ARRAY:
                return writeArray();
            case DATA_STRUCTURE:
                return writeStructures();
            case DATA_FIELD_ARRAY:
                return writeFieldArray();
            case SHARED_MEMORY:
                return writeSharedMemory();
            default:
                return;
        }
    }

private:
    virtual void writeTable() = 0;
    virtual void writeArray() = 0;
    virtual void writeStructures() = 0;
    virtual void writeFieldArray() = 0;
    virtual void writeSharedMemory() = 0;
};

}  // namespace intake
