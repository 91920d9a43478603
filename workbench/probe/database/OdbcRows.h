#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include "workbench/probe/database/OdbcHandles.h"

namespace probe {

/// Cancels a statement at the deadline, unless it goes before: few drivers keep to a time limit.
class CancelAtDeadline {
public:
    CancelAtDeadline(SQLHSTMT statement, Deadline end);
    ~CancelAtDeadline();
    CancelAtDeadline(const CancelAtDeadline&) = delete;
    CancelAtDeadline& operator=(const CancelAtDeadline&) = delete;

private:
    std::mutex mutex_;
    std::condition_variable ended_;
    bool isEnded_ = false;
    std::thread thread_;
};

/// What a query gives through a driver of ODBC.
class OdbcRows final : public Rows {
public:
    /// Runs the query. Throws DatabaseFailure.
    OdbcRows(SQLHDBC connection, const std::string& query, Deadline end);

    const std::vector<std::string>& columns() const override { return columns_; }
    bool next() override;
    std::optional<std::string> value(std::size_t column) override;
    bool isText(std::size_t column) const override;

private:
    [[noreturn]] void fail() const;
    void describe();

    OdbcStatementHandle statement_;
    const Deadline end_;
    CancelAtDeadline canceller_;
    std::vector<std::string> columns_;
    std::vector<SQLSMALLINT> types_;
};

}  // namespace probe
