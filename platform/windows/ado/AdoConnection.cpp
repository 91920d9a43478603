#include "platform/windows/ado/AdoConnection.h"

#include "platform/windows/ado/AdoRecordset.h"
#include "platform/windows/base/wide_text.h"
#include "platform/windows/com/BasicString.h"
#include "platform/windows/com/Variant.h"

namespace intake {

void AdoConnection::open(const std::string& connectionString) {
    checkCom(connection_->Open(BasicString(connectionString).get(), BasicString("").get(),
                               BasicString("").get(), ADO_UNSPECIFIED));
}

std::unique_ptr<Recordset> AdoConnection::openRecordset(const std::string& query) {
    Variant source;
    source.setText(query);
    Variant connection;
    connection.setObject(connection_.get());
    checkCom(recordset_->Open(source.get(), connection.get(), ADO_UNSPECIFIED, ADO_LOCK_READ_ONLY,
                              ADO_UNSPECIFIED));
    auto recordset = std::make_unique<AdoRecordset>(std::move(recordset_));
    // That of a statement without a result set is closed, and fails here.
    recordset->atEnd();
    return recordset;
}

std::vector<Connection::Error> AdoConnection::errors() {
    ComPointer<IAdoErrors> collection;
    const HRESULT result = connection_->get_Errors(collection.out());
    if (result == E_NOTIMPL) {
        return {};  // Wine has no such collection; the failure that is asked about still counts.
    }
    checkCom(result);
    long count = 0;
    checkCom(collection->get_Count(&count));
    std::vector<Error> errors;
    for (long position = 0; position < count; ++position) {
        Variant index;
        index.setInteger(position);
        ComPointer<IAdoError> error;
        checkCom(collection->get_Item(index.get(), error.out()));
        long number = 0;
        checkCom(error->get_Number(&number));
        BasicString description;
        checkCom(error->get_Description(description.out()));
        errors.push_back({static_cast<uint32_t>(number), toUtf8(description.view())});
    }
    return errors;
}

}  // namespace intake
