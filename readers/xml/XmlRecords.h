#pragma once

#include <cstdint>
#include <string>

#include "pipeline/ReaderLogger.h"
#include "pipeline/RequestRecord.h"
#include "pipeline/RowRange.h"
#include "pipeline/TargetModeWriter.h"
#include "platform/XmlDocument.h"

namespace intake {

/// Writes the requested rows of a document's selected nodes as the records of a target mode. Made
/// for one request; worker thread.
class XmlRecords final : public TargetModeWriter {
public:
    /// All are borrowed and outlive this object; the script is appended to.
    XmlRecords(XmlDocument& document, const RequestRecord& request, ReaderLogger& logger,
               std::string& script);

    /// Writes nothing when the selection has no more rows than are to be skipped, and nothing in a
    /// mode that does not exist.
    void write();

private:
    using Node = XmlDocument::Node;

    void writeTable() override;
    void writeArray() override;
    void writeStructures() override;
    void writeFieldArray() override;
    void writeSharedMemory() override;

    void writeRecord(Node row);
    void writeFields(Node row);
    void writeValue(Node node);
    void writeCount();

    void setKeyExpression();

    /// Appends the text of a row's key; false, and one more row left out, when it has none.
    bool writeKey(Node row);
    void reportRowsWithoutKey();

    /// Calls `each` with every row and its place among the delivered ones, from 0.
    template <class Each>
    void forEachRow(Each each) {
        for (int64_t row = rows_.first(); row < rows_.end; ++row) {
            each(document_.selected(static_cast<size_t>(row)), row - rows_.first());
        }
    }

    bool isLast(int64_t place) const { return rows_.first() + place + 1 == rows_.end; }

    XmlDocument& document_;
    const RequestRecord& request_;
    ReaderLogger& logger_;
    std::string& script_;
    const int64_t selected_;
    const RowRange rows_;
    int64_t rowsWithoutKey_ = 0;
};

}  // namespace intake
