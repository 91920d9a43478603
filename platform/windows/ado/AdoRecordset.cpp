#include "platform/windows/ado/AdoRecordset.h"

#include "platform/windows/ado/variant_value.h"
#include "platform/windows/base/wide_text.h"

namespace intake {

namespace {

std::string nameOf(const ComPointer<IAdoField>& field) {
    BasicString name;
    checkCom(field->get_Name(name.out()));
    return toUtf8(name.view());
}

}  // namespace

AdoRecordset::AdoRecordset(ComPointer<IAdoRecordset> recordset) : recordset_(std::move(recordset)) {
    checkCom(recordset_->get_Fields(collection_.out()));
    long count = 0;
    checkCom(collection_->get_Count(&count));
    fields_.resize(static_cast<size_t>(count));
}

bool AdoRecordset::take(size_t position) {
    Field& field = fields_[position];
    if (!field.isAsked) {
        field.isAsked = true;
        Variant index;
        index.setInteger(static_cast<long>(position));
        succeeded(collection_->get_Item(index.get(), field.object.out()));
    }
    return static_cast<bool>(field.object);
}

std::string_view AdoRecordset::fieldName(size_t field) {
    std::string& name = fields_[field].name;
    if (name.empty() && take(field)) {
        name = nameOf(fields_[field].object);
    }
    return name;
}

/// The collection finds names without regard to case; which of its fields it found, the name tells.
std::optional<size_t> AdoRecordset::findField(const std::string& name) {
    Variant index;
    index.setText(name);
    ComPointer<IAdoField> found;
    const HRESULT result = collection_->get_Item(index.get(), found.out());
    if (result == ADO_ITEM_NOT_FOUND) {
        succeeded(result);
        return std::nullopt;
    }
    checkCom(result);
    const std::string foundName = nameOf(found);
    for (size_t field = 0; field < fields_.size(); ++field) {
        if (fieldName(field) == foundName) {
            return field;
        }
    }
    return std::nullopt;
}

void AdoRecordset::moveFirst() {
    checkCom(recordset_->MoveFirst());
}

void AdoRecordset::moveNext() {
    checkCom(recordset_->MoveNext());
}

bool AdoRecordset::atEnd() {
    VARIANT_BOOL end = VARIANT_FALSE;
    checkCom(recordset_->get_EOF(&end));
    return end != VARIANT_FALSE;
}

bool AdoRecordset::value(size_t field, FieldValue& value) {
    if (field >= fields_.size() || !take(field)) {
        return false;
    }
    checkCom(fields_[field].object->get_Value(value_.out()));
    readVariant(value_.get(), text_, value);
    return true;
}

}  // namespace intake
