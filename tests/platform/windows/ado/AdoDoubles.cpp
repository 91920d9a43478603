#include "tests/platform/windows/ado/AdoDoubles.h"

#include "platform/windows/ado/ado.h"
#include "platform/windows/base/wide_text.h"
#include "tests/platform/windows/DispatchDouble.h"

// A method that nobody calls.
#define UNUSED(method)               \
    STDMETHODIMP method() override { \
        return E_NOTIMPL;            \
    }

namespace intake {

namespace {

constexpr IID NO_IDENTITY{};

HRESULT give(const std::wstring& text, BSTR* out) {
    *out = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return S_OK;
}

class ErrorDouble final : public DispatchDouble<IAdoError> {
public:
    ErrorDouble(ComCalls& calls, const AdoDoubles::Error& error)
        : DispatchDouble(calls, NO_IDENTITY), error_(error) {}

    STDMETHODIMP get_Number(long* number) override {
        *number = error_.number;
        return enter("Error.Number");
    }
    UNUSED(get_Source)
    STDMETHODIMP get_Description(BSTR* description) override {
        const HRESULT result = enter("Error.Description");
        return FAILED(result) ? result : give(error_.description, description);
    }

private:
    const AdoDoubles::Error& error_;
};

class ErrorsDouble final : public DispatchDouble<IAdoErrors> {
public:
    explicit ErrorsDouble(AdoDoubles& ado) : DispatchDouble(ado.calls, NO_IDENTITY), ado_(ado) {}

    STDMETHODIMP get_Count(long* count) override {
        *count = static_cast<long>(ado_.errors.size());
        return enter("Errors.Count");
    }
    UNUSED(NewEnum)
    UNUSED(Refresh)
    STDMETHODIMP get_Item(VARIANT index, IAdoError** error) override {
        const HRESULT result = enter("Errors.Item " + std::to_string(index.lVal));
        if (SUCCEEDED(result)) {
            *error = new ErrorDouble(calls_, ado_.errors.at(static_cast<size_t>(index.lVal)));
        }
        return result;
    }

private:
    AdoDoubles& ado_;
};

class FieldDouble final : public DispatchDouble<IAdoField> {
public:
    FieldDouble(AdoDoubles& ado, size_t field)
        : DispatchDouble(ado.calls, NO_IDENTITY), ado_(ado), field_(field) {}

    UNUSED(get_Properties)
    UNUSED(get_ActualSize)
    UNUSED(get_Attributes)
    UNUSED(get_DefinedSize)
    STDMETHODIMP get_Name(BSTR* name) override {
        const HRESULT result = enter("Field.Name");
        return FAILED(result) ? result : give(ado_.names[field_], name);
    }
    UNUSED(get_Type)
    STDMETHODIMP get_Value(VARIANT* value) override {
        const HRESULT result = enter("Field.Value");
        if (FAILED(result)) {
            return result;
        }
        VARIANT& source = ado_.records.at(ado_.record).at(field_);
        // What the system cannot copy has nothing to be copied.
        if (FAILED(VariantCopy(value, &source))) {
            *value = source;
        }
        return S_OK;
    }
    STDMETHODIMP put_Value(VARIANT) override { return E_NOTIMPL; }

private:
    AdoDoubles& ado_;
    const size_t field_;
};

class FieldsDouble final : public DispatchDouble<IAdoFields> {
public:
    explicit FieldsDouble(AdoDoubles& ado) : DispatchDouble(ado.calls, NO_IDENTITY), ado_(ado) {}

    STDMETHODIMP get_Count(long* count) override {
        *count = static_cast<long>(ado_.names.size());
        return enter("Fields.Count");
    }
    UNUSED(NewEnum)
    UNUSED(Refresh)
    STDMETHODIMP get_Item(VARIANT index, IAdoField** field) override {
        const size_t position = positionOf(index);
        const std::string which =
            index.vt == VT_BSTR ? toUtf8(index.bstrVal) : std::to_string(index.lVal);
        const HRESULT result = enter("Fields.Item " + which);
        if (FAILED(result)) {
            return result;
        }
        if (position >= ado_.names.size() || position == ado_.missingField) {
            return ADO_ITEM_NOT_FOUND;
        }
        *field = new FieldDouble(ado_, position);
        return S_OK;
    }
    UNUSED(OldAppend)
    UNUSED(Delete)
    STDMETHODIMP Append(BSTR, long, LONG_PTR, long, VARIANT) override { return E_NOTIMPL; }

private:
    size_t positionOf(const VARIANT& index) const {
        if (index.vt != VT_BSTR) {
            return static_cast<size_t>(index.lVal);
        }
        size_t position = 0;
        while (position < ado_.names.size() &&
               _wcsicmp(ado_.names[position].c_str(), index.bstrVal) != 0) {
            ++position;
        }
        return position;
    }

    AdoDoubles& ado_;
};

class ConnectionDouble final : public DispatchDouble<IAdoConnection> {
public:
    explicit ConnectionDouble(AdoDoubles& ado)
        : DispatchDouble(ado.calls, IID_ADO_CONNECTION), ado_(ado) {}

    UNUSED(get_Properties)
    UNUSED(get_ConnectionString)
    UNUSED(put_ConnectionString)
    UNUSED(get_CommandTimeout)
    UNUSED(put_CommandTimeout)
    UNUSED(get_ConnectionTimeout)
    UNUSED(put_ConnectionTimeout)
    UNUSED(get_Version)
    UNUSED(Close)
    UNUSED(Execute)
    UNUSED(BeginTrans)
    UNUSED(CommitTrans)
    UNUSED(RollbackTrans)
    STDMETHODIMP Open(BSTR connectionString, BSTR user, BSTR password, long options) override {
        const HRESULT result =
            enter("Connection.Open |" + toUtf8(connectionString) + "|" + toUtf8(user) + "|" +
                  toUtf8(password) + "|" + std::to_string(options));
        return FAILED(result) ? result : ado_.opening;
    }
    STDMETHODIMP get_Errors(IAdoErrors** errors) override {
        const HRESULT result = enter("Connection.Errors");
        if (FAILED(result) || FAILED(ado_.listingErrors)) {
            return FAILED(result) ? result : ado_.listingErrors;
        }
        *errors = new ErrorsDouble(ado_);
        return S_OK;
    }

private:
    AdoDoubles& ado_;
};

class RecordsetDouble final : public DispatchDouble<IAdoRecordset> {
public:
    explicit RecordsetDouble(AdoDoubles& ado)
        : DispatchDouble(ado.calls, IID_ADO_RECORDSET), ado_(ado) {}

    UNUSED(get_Properties)
    UNUSED(get_AbsolutePosition)
    UNUSED(put_AbsolutePosition)
    UNUSED(putref_ActiveConnection)
    UNUSED(put_ActiveConnection)
    UNUSED(get_ActiveConnection)
    UNUSED(get_BOF)
    UNUSED(get_Bookmark)
    UNUSED(put_Bookmark)
    UNUSED(get_CacheSize)
    UNUSED(put_CacheSize)
    UNUSED(get_CursorType)
    UNUSED(put_CursorType)
    STDMETHODIMP get_EOF(VARIANT_BOOL* end) override {
        *end = ado_.record < ado_.records.size() ? VARIANT_FALSE : VARIANT_TRUE;
        return enter("Recordset.EOF");
    }
    STDMETHODIMP get_Fields(IAdoFields** fields) override {
        const HRESULT result = enter("Recordset.Fields");
        if (SUCCEEDED(result) && ado_.hasFields) {
            *fields = new FieldsDouble(ado_);
        }
        return result;
    }
    UNUSED(get_LockType)
    UNUSED(put_LockType)
    UNUSED(get_MaxRecords)
    UNUSED(put_MaxRecords)
    UNUSED(get_RecordCount)
    UNUSED(putref_Source)
    UNUSED(put_Source)
    UNUSED(get_Source)
    STDMETHODIMP AddNew(VARIANT, VARIANT) override { return E_NOTIMPL; }
    UNUSED(CancelUpdate)
    UNUSED(Close)
    UNUSED(Delete)
    UNUSED(GetRows)
    UNUSED(Move)
    STDMETHODIMP MoveNext() override {
        ++ado_.record;
        return enter("Recordset.MoveNext");
    }
    UNUSED(MovePrevious)
    STDMETHODIMP MoveFirst() override {
        ado_.record = 0;
        return enter("Recordset.MoveFirst");
    }
    UNUSED(MoveLast)
    STDMETHODIMP Open(VARIANT source, VARIANT connection, long cursor, long lock,
                      long options) override {
        const bool connected = connection.vt == VT_DISPATCH && connection.pdispVal != nullptr;
        const HRESULT result =
            enter("Recordset.Open |" + toUtf8(source.bstrVal) + "|" +
                  (connected ? "connection" : "nothing") + "|" + std::to_string(cursor) + "|" +
                  std::to_string(lock) + "|" + std::to_string(options));
        return FAILED(result) ? result : ado_.querying;
    }
    UNUSED(Requery)
    UNUSED(OldResync)
    STDMETHODIMP Update(VARIANT, VARIANT) override { return E_NOTIMPL; }

private:
    AdoDoubles& ado_;
};

CLSID classOf(const wchar_t* name) {
    CLSID object{};
    CLSIDFromProgID(name, &object);
    return object;
}

}  // namespace

ComFactory AdoDoubles::factory() {
    return [this](REFCLSID object, IUnknown*, DWORD context, REFIID, void** made) -> HRESULT {
        const bool isConnection = object == classOf(ADO_CONNECTION);
        const std::string place = context == CLSCTX_ALL ? " anywhere" : "";
        const HRESULT result =
            calls.enter((isConnection ? "create connection" : "create recordset") + place);
        if (SUCCEEDED(result)) {
            *made = isConnection ? static_cast<IUnknown*>(new ConnectionDouble(*this))
                                 : new RecordsetDouble(*this);
        }
        return result;
    };
}

}  // namespace intake
