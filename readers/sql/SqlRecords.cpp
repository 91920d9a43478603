#include "readers/sql/SqlRecords.h"

#include <algorithm>
#include <new>

#include "pipeline/script_text.h"

namespace intake {

namespace {

constexpr size_t LARGE = size_t{1} << 20;  // of a script; from there on its growth is looked after
constexpr const char* VALUE_END = "\";";

}  // namespace

SqlRecords::SqlRecords(Recordset& recordset, const RequestRecord& request, ReaderLogger& logger,
                       std::string& script, std::string& error, RowsLimit limit)
    : recordset_(recordset),
      request_(request),
      logger_(logger),
      script_(script),
      error_(error),
      writer_(script),
      limit_(limit),
      start_(script.size()),
      from_(request.fromRow),
      end_(from_ + request.numRows) {}

bool SqlRecords::write() {
    writeInMode(request_.targetMode);
    return succeeded_;
}

void SqlRecords::writeTable() {
    writeRecords("Before DATATABLE\n", &SqlRecords::writeTableRecord);
}

void SqlRecords::writeArray() {
    if (writeRecords("Before DATAARRAY\n", &SqlRecords::writeArrayRecord)) {
        writeCount();
    }
}

void SqlRecords::writeStructures() {
    writeRecords("Before DATASTRUCTURE\n", &SqlRecords::writeStructure);
}

void SqlRecords::writeFieldArray() {
    if (writeRecords("Before DATAFIELDARRAY\n", &SqlRecords::writeFieldArrayValue)) {
        putFieldArrayHead();
        writeCount();
    }
}

void SqlRecords::writeSharedMemory() {
    writeRecords("Before SHAREDMEM\n", &SqlRecords::writeSharedMemoryRecord);
}

bool SqlRecords::writeRecords(const char* trace, WriteRecord writeRecord) {
    logger_.Write(LOG_DEBUG, trace);
    if (!recordset_.atEnd()) {
        recordset_.moveFirst();
        readNames();
        succeeded_ = walk(writeRecord);
    }
    return succeeded_;
}

void SqlRecords::readNames() {
    leads_.resize(recordset_.fieldCount());
    for (size_t field = 0; field < leads_.size(); ++field) {
        leads_[field].assign(field == 0 ? "" : VALUE_END);
        leads_[field].append(recordset_.fieldName(field)).append("=\"");
    }
}

bool SqlRecords::walk(WriteRecord writeRecord) {
    for (; walked_ < end_ && !recordset_.atEnd(); ++walked_) {
        if (walked_ < from_) {
            recordset_.moveNext();
            continue;
        }
        if (!(this->*writeRecord)()) {
            return false;
        }
        ++written_;
        reserveForTheRest();
        recordset_.moveNext();
        if (request_.targetMode == SHARED_MEMORY && !recordset_.atEnd()) {
            script_.append(request_.rowsDelimiter);
        }
    }
    return true;
}

/// A text that doubles its room is copied when it is long, and then lies in memory twice. Before
/// that, this makes room for the records to come, as they have been so far, but not for many times
/// what is there: a range may reach far beyond the last record.
void SqlRecords::reserveForTheRest() {
    constexpr double MOST_TIMES = 16;
    constexpr double LEAST_TIMES = 0.125;
    constexpr double MARGIN = 1.5;
    const size_t length = script_.size() - start_;
    if (length < LARGE || script_.capacity() - script_.size() >= length / 16) {
        return;
    }
    const double rest = static_cast<double>(end_ - walked_) / static_cast<double>(written_);
    const double times = std::clamp(rest * MARGIN, LEAST_TIMES, MOST_TIMES);
    try {
        const auto wanted = static_cast<size_t>(static_cast<double>(length) * times);
        script_.reserve(std::min(script_.size() + wanted, limit_.bytes()));
    } catch (const std::bad_alloc&) {
        return;  // it may never be needed
    }
}

bool SqlRecords::writeTableRecord() {
    script_.append(request_.table).append("[");
    return writeKey() && writeFields("]={{", "};};");
}

bool SqlRecords::writeArrayRecord() {
    script_.append(request_.table).append("[");
    writer_.writeInteger(written_);
    return writeFields("]={{", "};};");
}

bool SqlRecords::writeStructure() {
    script_.append(request_.table);
    return (!request_.table.empty() || writeKey()) && writeFields("={", "};");
}

bool SqlRecords::writeFieldArrayValue() {
    script_.append(written_ == 0 ? "\"\"" : ",\"\"");
    const bool found = writeKey();
    script_.append("\"\"");
    return found;
}

bool SqlRecords::writeSharedMemoryRecord() {
    for (size_t field = 0; field < leads_.size(); ++field) {
        script_.append(field == 0 ? "" : request_.fieldsDelimiter);
        if (!writeField(field)) {
            return false;
        }
    }
    return true;
}

bool SqlRecords::writeFields(const char* opening, const char* closing) {
    script_.append(opening);
    for (size_t field = 0; field < leads_.size(); ++field) {
        script_.append(leads_[field]);
        if (!writeField(field)) {
            return false;
        }
    }
    script_.append(leads_.empty() ? "" : VALUE_END).append(closing);
    return true;
}

bool SqlRecords::writeKey() {
    if (written_ == 0) {
        key_ = recordset_.findField(request_.key);
    }
    if (!key_) {
        error_.append("ERROR: Key: \"").append(request_.key).append("\" not found.");
        return false;
    }
    return writeField(*key_);
}

bool SqlRecords::writeField(size_t field) {
    FieldValue value;
    if (!recordset_.value(field, value)) {
        error_.append("ERROR: Cannot retrieve field #").append(std::to_string(field));
        return false;
    }
    writer_.writeValue(value);
    if (limit_.isExceededBy(script_)) {  // a record may have any number of them
        error_.append(limit_.error());
        return false;
    }
    return true;
}

/// The head says how many values there are, so it can only be put before them once they are there.
void SqlRecords::putFieldArrayHead() {
    std::string head;
    appendRangeHead(head, request_.table, written_);
    script_.insert(start_, head).append(";");
}

void SqlRecords::writeCount() {
    script_.append(request_.varsPrefix).append("READER_NUM_RECORDS=");
    writer_.writeInteger(walked_);
    script_.append(";");
}

}  // namespace intake
