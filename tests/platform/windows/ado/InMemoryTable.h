#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Database.h"
#include "platform/windows/ado/ado.h"
#include "platform/windows/com/ComPointer.h"
#include "platform/windows/com/Variant.h"

namespace intake {

/// A database that needs no provider: whatever it is asked, it answers with a recordset of the
/// system's own ADO that a test has filled. Answers once.
class InMemoryTable final : public DatabaseServices {
public:
    // Of ADO's data types.
    static constexpr long INTEGER = 3, DOUBLE = 5, BOOLEAN = 11, BIG_INTEGER = 20, TEXT = 202;

    /// Throws PlatformError where the system has no ADO.
    InMemoryTable();

    void addField(std::wstring_view name, long type);

    /// Once, after the fields; each record has a value for each of them.
    void fill(const std::vector<std::vector<Variant>>& records);

    std::unique_ptr<Connection> createConnection(const EndMark& endMark) override;

private:
    void addEmptyRecords(size_t count);
    void put(size_t field, const Variant& value);
    void update();

    ComPointer<IAdoRecordset> recordset_;
    ComPointer<IAdoFields> fields_;
};

}  // namespace intake
