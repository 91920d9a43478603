#pragma once

#include <vector>

#include "platform/linux/sqlite/SqliteRecordset.h"
#include "platform/linux/sqlite/declared_types.h"

namespace intake {

/// The records of a query on an SQLite database. A value of a column that its table declares as a
/// boolean, date or number with a fraction is one.
class SqliteQueryRecords final : public SqliteRecordset {
public:
    SqliteQueryRecords(SqliteStatement statement, const char* source, const EndMark& endMark);

    bool value(size_t field, FieldValue& value) override;

private:
    std::vector<DeclaredType> types_;
};

}  // namespace intake
