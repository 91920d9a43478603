#pragma once

#include <vector>

#include "platform/Database.h"
#include "platform/windows/ado/ado.h"
#include "platform/windows/com/BasicString.h"
#include "platform/windows/com/ComPointer.h"
#include "platform/windows/com/Variant.h"

namespace intake {

/// The records of a recordset of ADO that is open.
class AdoRecordset final : public Recordset {
public:
    /// Throws PlatformError when the recordset does not tell its fields.
    explicit AdoRecordset(ComPointer<IAdoRecordset> recordset);

    size_t fieldCount() override { return fields_.size(); }

    /// Empty for a field that cannot be taken, which value() then tells.
    std::string_view fieldName(size_t field) override;
    std::optional<size_t> findField(const std::string& name) override;
    void moveFirst() override;
    void moveNext() override;
    bool atEnd() override;
    bool value(size_t field, FieldValue& value) override;

private:
    /// A field is the same object for all records. It is taken from the collection when its name or
    /// value is first asked for.
    struct Field {
        bool isAsked = false;
        ComPointer<IAdoField> object;  // null where it cannot be taken
        std::string name;
    };

    bool take(size_t position);

    const ComPointer<IAdoRecordset> recordset_;
    ComPointer<IAdoFields> collection_;
    std::vector<Field> fields_;
    Variant value_;     // what was asked for last
    std::string text_;  // of it
};

}  // namespace intake
