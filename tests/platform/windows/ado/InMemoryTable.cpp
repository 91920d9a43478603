#include "tests/platform/windows/ado/InMemoryTable.h"

#include "platform/windows/ado/AdoRecordset.h"
#include "platform/windows/com/BasicString.h"

namespace intake {

namespace {

constexpr LONG_PTR LONGEST_TEXT = 100;

class FilledConnection final : public Connection {
public:
    explicit FilledConnection(ComPointer<IAdoRecordset> recordset)
        : recordset_(std::move(recordset)) {}

    void open(const std::string&) override {}
    std::unique_ptr<Recordset> openRecordset(const std::string&) override {
        return std::make_unique<AdoRecordset>(std::move(recordset_));
    }
    std::vector<Error> errors() override { return {}; }

private:
    ComPointer<IAdoRecordset> recordset_;
};

VARIANT missing() {
    Variant argument;
    argument.setMissing();
    return argument.get();
}

}  // namespace

InMemoryTable::InMemoryTable() {
    CLSID object{};
    checkCom(CLSIDFromProgID(ADO_RECORDSET, &object));
    checkCom(CoCreateInstance(object, nullptr, CLSCTX_ALL, IID_ADO_RECORDSET, recordset_.outAny()));
    checkCom(recordset_->get_Fields(fields_.out()));
}

void InMemoryTable::addField(std::wstring_view name, long type) {
    constexpr long MAY_BE_NULL = 0x20;
    checkCom(fields_->Append(BasicString(name).get(), type, type == TEXT ? LONGEST_TEXT : 0,
                             MAY_BE_NULL, missing()));
}

/// In two steps, since the ADO of Wine forgets values when a record is added.
void InMemoryTable::fill(const std::vector<std::vector<Variant>>& records) {
    checkCom(
        recordset_->Open(missing(), missing(), ADO_UNSPECIFIED, ADO_UNSPECIFIED, ADO_UNSPECIFIED));
    addEmptyRecords(records.size());
    checkCom(recordset_->MoveFirst());
    for (const std::vector<Variant>& record : records) {
        for (size_t field = 0; field < record.size(); ++field) {
            put(field, record[field]);
        }
        update();
        checkCom(recordset_->MoveNext());
    }
    checkCom(recordset_->MoveFirst());
}

void InMemoryTable::addEmptyRecords(size_t count) {
    for (size_t record = 0; record < count; ++record) {
        checkCom(recordset_->AddNew(missing(), missing()));
        update();
    }
}

void InMemoryTable::put(size_t field, const Variant& value) {
    Variant index;
    index.setInteger(static_cast<long>(field));
    ComPointer<IAdoField> target;
    checkCom(fields_->get_Item(index.get(), target.out()));
    checkCom(target->put_Value(value.get()));
}

void InMemoryTable::update() {
    const HRESULT result = recordset_->Update(missing(), missing());
    if (result != E_NOTIMPL) {  // Wine keeps the values without.
        checkCom(result);
    }
}

std::unique_ptr<Connection> InMemoryTable::createConnection(const EndMark&) {
    return std::make_unique<FilledConnection>(std::move(recordset_));
}

}  // namespace intake
