#pragma once

#include <vector>

#include "platform/Database.h"
#include "platform/EndMark.h"
#include "platform/linux/odbc/OdbcColumn.h"

namespace intake {

/// The records of a statement that was executed, fetched one at a time from the driver.
class OdbcRecordset final : public Recordset {
public:
    /// Throws PlatformError when the statement returns no records.
    OdbcRecordset(OdbcHandle statement, const OdbcDriver& driver, const EndMark& endMark);

    size_t fieldCount() override { return columns_.size(); }
    std::string_view fieldName(size_t field) override { return columns_[field].name(); }
    std::optional<size_t> findField(const std::string& name) override;
    void moveFirst() override {}
    void moveNext() override;
    bool atEnd() override { return atEnd_; }
    bool value(size_t field, FieldValue& value) override;

private:
    void describeColumns();
    SQLRETURN fetch();
    void readUpTo(size_t field);

    const EndMark& endMark_;
    OdbcHandle statement_;
    OdbcDriver driver_;
    std::vector<OdbcColumn> columns_;
    uint64_t record_ = 0;  // counted from 1
    size_t read_ = 0;      // so many columns of it were read
    bool atEnd_ = false;
};

}  // namespace intake
