#include "platform/windows/ado/AdoDatabases.h"

#include "platform/windows/ado/AdoConnection.h"
#include "platform/windows/com/ComPointer.h"

namespace intake {

namespace {

/// By its programmatic name; ADO may be served from anywhere, also from another process.
template <class Interface>
ComPointer<Interface> createByName(const ComFactory& create, const wchar_t* name, REFIID identity) {
    CLSID object{};
    checkCom(CLSIDFromProgID(name, &object));
    ComPointer<IUnknown> unknown;
    checkCom(create(object, nullptr, CLSCTX_ALL, IID_IUnknown, unknown.outAny()));
    checkCom(OleRun(unknown.get()));
    return unknown.as<Interface>(identity);
}

}  // namespace

std::unique_ptr<Connection> AdoDatabases::createConnection(const EndMark&) {
    auto connection = createByName<IAdoConnection>(create_, ADO_CONNECTION, IID_ADO_CONNECTION);
    auto recordset = createByName<IAdoRecordset>(create_, ADO_RECORDSET, IID_ADO_RECORDSET);
    return std::make_unique<AdoConnection>(std::move(connection), std::move(recordset));
}

}  // namespace intake
