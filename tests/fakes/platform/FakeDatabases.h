#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/Database.h"
#include "platform/PlatformError.h"

namespace intake {

/// A value of a fake record. Converts from what a test writes in a row: texts are VT_BSTR, numbers
/// VT_I4 or VT_R8, nullptr is VT_NULL.
struct FakeValue {
    FakeValue(VariantType ofType, int64_t integer) : value{ofType, {integer}, {}} {}
    FakeValue(VariantType ofType, std::string ofText) : value{ofType, {}, {}}, text(ofText) {}
    FakeValue(int integer) : FakeValue(VT_I4, integer) {}
    FakeValue(double number) : value{VT_R8, {}, {}} { value.number = number; }
    FakeValue(const char* ofText) : FakeValue(VT_BSTR, std::string(ofText)) {}
    FakeValue(std::nullptr_t) : FakeValue(VT_NULL, 0) {}

    static FakeValue natural(VariantType type, uint64_t number);
    static FakeValue number(VariantType type, double number);
    /// A type whose value cannot be shown.
    static FakeValue ofType(int type) { return {static_cast<VariantType>(type), 0}; }
    /// A field that cannot be taken from the field collection.
    static FakeValue missing();

    FieldValue value;
    std::string text;
    bool isMissing = false;
};

using FakeRow = std::vector<FakeValue>;

/// Databases that answer every query with the rows that a test says, and keep every call as a line
/// of text, any of which can be made to fail. What they lend holds as long as is promised and no
/// longer. Used on one thread; outlives what it makes.
class FakeDatabases final : public DatabaseServices {
public:
    std::unique_ptr<Connection> createConnection(const EndMark& endMark) override;

    std::vector<std::string> names;         // of the fields
    std::vector<FakeRow> rows;              // each with a value for every field
    std::vector<Connection::Error> errors;  // what connections report
    std::vector<std::string> warnings;      // what they have to say when they are open

    /// Makes the `occurrence`th call of that name throw failure().
    void failAt(const std::string& call, int occurrence = 1);

    /// What failing calls throw, and its report.
    static PlatformError failure();
    static const std::string& failureReport();

    /// The calls so far, oldest first, each ended by a line feed.
    const std::string& calls() const { return calls_; }

    /// What the last connection was told to watch.
    const EndMark* endMark() const { return endMark_; }

    /// For the fakes that this one makes: notes a call, and throws where it is to fail.
    void note(const std::string& call, const std::string& details = "");
    /// Notes the end of a connection or recordset.
    void noteEnd(const std::string& what) { calls_ += "release " + what + "\n"; }

private:
    const EndMark* endMark_ = nullptr;
    std::string calls_;
    std::string failingCall_;
    int callsToFailure_ = 0;
};

}  // namespace intake
