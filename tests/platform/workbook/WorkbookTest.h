#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/linux/ProviderConnection.h"
#include "tests/formats/workbook/TestBook.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// Queries workbooks that a test writes, or that stand in fixtures/.
class WorkbookTest : public testing::Test {
protected:
    /// The field names on one line and each record on one below: texts in single quotes, numbers as
    /// they are, true and false, dates as `date 45000.5`, integers as `7i`, nothing as `-`.
    std::string rows(const std::string& bytes, const std::string& query);
    std::string rows(const TestBook& book, const std::string& query) {
        return rows(book.bytes(), query);
    }
    std::string fixtureRows(const std::string& name, const std::string& query);

    /// The field names alone.
    std::string fields(const TestBook& book, const std::string& query);

    /// The description of the error by which opening, or the query, fails, with the path of a
    /// written workbook shown as PATH.
    std::string openError(const std::string& bytes);
    std::string openError(const TestBook& book) { return openError(book.bytes()); }
    std::string queryError(const TestBook& book, const std::string& query);

    /// With NO the first row is a record.
    std::string header_ = "YES";

    std::string connectionString(const std::string& path) const;
    std::string write(const std::string& bytes) const;
    std::string withoutPath(std::string text) const;

    TempDirectory directory_;
    EndMark endMark_;
};

/// All that a recordset gives, written as WorkbookTest::rows does.
std::string written(Recordset& recordset);

}  // namespace intake
