#pragma once

#include <list>
#include <string>
#include <vector>

#include "plugin/HostRecord.h"

namespace intake {

/// A record as the host lays it out: every text in a buffer of the registered length that the host
/// owns, every value at its registered default, no instance. An instance that is still there at the
/// end is deleted.
class TestRecord {
public:
    TestRecord();
    ~TestRecord();
    TestRecord(const TestRecord&) = delete;
    TestRecord& operator=(const TestRecord&) = delete;

    HostRecord& operator*() { return record_; }
    HostRecord* operator->() { return &record_; }
    HostRecord* get() { return &record_; }
    ReaderParams& params() { return record_.params; }

    /// Sets a text parameter as the editor would. The text must fit.
    static void set(char* buffer, const std::string& text);

private:
    char* makeText(size_t capacity, const std::string& initial = "");
    void makeReaderTexts(ReaderParams& params);

    std::list<std::vector<char>> texts_;
    HostRecord record_{};
};

}  // namespace intake
