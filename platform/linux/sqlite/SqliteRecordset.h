#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Database.h"
#include "platform/linux/sqlite/SqliteStatement.h"

namespace intake {

/// The records of a query that SQLite runs. A value has the type in which SQLite holds it: VT_I8,
/// VT_R8, VT_BSTR, VT_NULL, or bytes, which are not given.
class SqliteRecordset : public Recordset {
public:
    /// Runs the statement up to its first record. Failures name `source`, a literal. `endMark`
    /// outlives this object. Throws PlatformError.
    SqliteRecordset(SqliteStatement statement, const char* source, const EndMark& endMark);

    size_t fieldCount() override { return names_.size(); }
    std::string_view fieldName(size_t field) override { return names_[field]; }
    std::optional<size_t> findField(const std::string& name) override;

    void moveFirst() override;
    void moveNext() override;
    bool atEnd() override { return ended_; }
    bool value(size_t field, FieldValue& value) override;

protected:
    sqlite3_stmt* statement() const { return statement_.get(); }
    std::string& name(size_t field) { return names_[field]; }

private:
    void step();

    SqliteStatement statement_;
    const char* const source_;
    const EndMark& endMark_;
    std::vector<std::string> names_;
    bool ended_ = false;
    bool moved_ = false;  // beyond the first record
};

}  // namespace intake
