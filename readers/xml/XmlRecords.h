#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "pipeline/ReaderLogger.h"
#include "pipeline/RequestRecord.h"
#include "pipeline/RowRange.h"
#include "pipeline/RowsLimit.h"
#include "pipeline/TargetModeWriter.h"
#include "platform/XmlDocument.h"

namespace intake {

/// Writes the requested rows of a document as the records of a target mode: those that it is handed
/// while the document is loaded, or those that were selected in it. Made for one request and one
/// document; worker thread.
class XmlRecords final : public TargetModeWriter {
public:
    /// All are borrowed and outlive this object; the script is appended to.
    XmlRecords(XmlDocument& document, const RequestRecord& request, ReaderLogger& logger,
               std::string& script, RowsLimit limit = RowsLimit("XML: The rows"));

    /// Lets the document hand its rows over while it is loaded, if it can. The load then throws
    /// RowsTooLarge, as write() does.
    void takeWhileLoading();

    /// Takes back what was written.
    void forgetRows();

    /// Ends the records. Writes nothing when there are no more rows than are to be skipped, and
    /// nothing in a mode that does not exist. Throws RowsTooLarge.
    void write();

private:
    using Node = XmlDocument::Node;

    XmlRowsWanted wanted() const;
    void takeRow(Node row);
    void makeRoom();

    void writeTable() override;
    void writeArray() override;
    void writeStructures() override;
    void writeFieldArray() override;
    void writeSharedMemory() override;

    void writeSelected(const RowRange& rows);
    void writeEnd(const RowRange& rows);
    bool needsKey() const;

    void writeRecord();
    void writeFields();
    void writeValue(Node node);

    /// Appends the text of the row's key; false, and one more row left out, when it has none.
    bool writeKey();
    void reportRowsWithoutKey(const RowRange& rows);

    XmlDocument& document_;
    const RequestRecord& request_;
    ReaderLogger& logger_;
    std::string& script_;
    const RowsLimit limit_;
    const size_t start_;  // of the records within the script
    Node row_ = nullptr;  // the one that is being written
    int64_t place_ = 0;   // of that among the rows delivered
    int64_t rowsWithoutKey_ = 0;
    bool hasRoom_ = false;
};

}  // namespace intake
