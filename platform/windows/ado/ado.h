#pragma once

// The classes and interfaces of ADO that are used. ADO has two generations of interfaces; these are
// the ones that every Windows knows. They are declared here, since not every compiler's headers
// have them, as far as the last method that anybody calls. A method that nobody calls keeps its
// place and nothing else.

#include "platform/windows/com/com.h"

namespace intake {

inline constexpr const wchar_t* ADO_CONNECTION = L"ADODB.Connection";
inline constexpr const wchar_t* ADO_RECORDSET = L"ADODB.Recordset";

inline constexpr IID IID_ADO_CONNECTION{
    0x00000550, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xaa, 0x00, 0x6d, 0x2e, 0xa4}};
inline constexpr IID IID_ADO_RECORDSET{
    0x00000556, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xaa, 0x00, 0x6d, 0x2e, 0xa4}};

/// A collection has no item of that name or at that position.
inline constexpr HRESULT ADO_ITEM_NOT_FOUND = static_cast<HRESULT>(0x800A0CC1);

// Of the enumerations of ADO.
inline constexpr long ADO_UNSPECIFIED = -1;  // a cursor type, or options
inline constexpr long ADO_LOCK_READ_ONLY = 1;

struct IAdoError : IDispatch {
    STDMETHOD(get_Number)(long* number) = 0;
    STDMETHOD(get_Source)() = 0;
    STDMETHOD(get_Description)(BSTR* description) = 0;
};

struct IAdoCollection : IDispatch {
    STDMETHOD(get_Count)(long* count) = 0;
    STDMETHOD(NewEnum)() = 0;
    STDMETHOD(Refresh)() = 0;
};

struct IAdoErrors : IAdoCollection {
    STDMETHOD(get_Item)(VARIANT index, IAdoError** error) = 0;
};

/// What many objects of ADO begin with.
struct IAdoObject : IDispatch {
    STDMETHOD(get_Properties)() = 0;
};

struct IAdoField : IAdoObject {
    STDMETHOD(get_ActualSize)() = 0;
    STDMETHOD(get_Attributes)() = 0;
    STDMETHOD(get_DefinedSize)() = 0;
    STDMETHOD(get_Name)(BSTR* name) = 0;
    STDMETHOD(get_Type)() = 0;
    STDMETHOD(get_Value)(VARIANT* value) = 0;
    STDMETHOD(put_Value)(VARIANT value) = 0;
};

struct IAdoFields : IAdoCollection {
    STDMETHOD(get_Item)(VARIANT index, IAdoField** field) = 0;
    STDMETHOD(OldAppend)() = 0;
    STDMETHOD(Delete)() = 0;
    STDMETHOD(Append)(BSTR name, long type, LONG_PTR size, long attributes, VARIANT value) = 0;
};

struct IAdoConnection : IAdoObject {
    STDMETHOD(get_ConnectionString)() = 0;
    STDMETHOD(put_ConnectionString)() = 0;
    STDMETHOD(get_CommandTimeout)() = 0;
    STDMETHOD(put_CommandTimeout)() = 0;
    STDMETHOD(get_ConnectionTimeout)() = 0;
    STDMETHOD(put_ConnectionTimeout)() = 0;
    STDMETHOD(get_Version)() = 0;
    STDMETHOD(Close)() = 0;
    STDMETHOD(Execute)() = 0;
    STDMETHOD(BeginTrans)() = 0;
    STDMETHOD(CommitTrans)() = 0;
    STDMETHOD(RollbackTrans)() = 0;
    STDMETHOD(Open)(BSTR connectionString, BSTR user, BSTR password, long options) = 0;
    STDMETHOD(get_Errors)(IAdoErrors** errors) = 0;
};

struct IAdoRecordset : IAdoObject {
    STDMETHOD(get_AbsolutePosition)() = 0;
    STDMETHOD(put_AbsolutePosition)() = 0;
    STDMETHOD(putref_ActiveConnection)() = 0;
    STDMETHOD(put_ActiveConnection)() = 0;
    STDMETHOD(get_ActiveConnection)() = 0;
    STDMETHOD(get_BOF)() = 0;
    STDMETHOD(get_Bookmark)() = 0;
    STDMETHOD(put_Bookmark)() = 0;
    STDMETHOD(get_CacheSize)() = 0;
    STDMETHOD(put_CacheSize)() = 0;
    STDMETHOD(get_CursorType)() = 0;
    STDMETHOD(put_CursorType)() = 0;
    STDMETHOD(get_EOF)(VARIANT_BOOL* end) = 0;
    STDMETHOD(get_Fields)(IAdoFields** fields) = 0;
    STDMETHOD(get_LockType)() = 0;
    STDMETHOD(put_LockType)() = 0;
    STDMETHOD(get_MaxRecords)() = 0;
    STDMETHOD(put_MaxRecords)() = 0;
    STDMETHOD(get_RecordCount)() = 0;
    STDMETHOD(putref_Source)() = 0;
    STDMETHOD(put_Source)() = 0;
    STDMETHOD(get_Source)() = 0;
    STDMETHOD(AddNew)(VARIANT fields, VARIANT values) = 0;
    STDMETHOD(CancelUpdate)() = 0;
    STDMETHOD(Close)() = 0;
    STDMETHOD(Delete)() = 0;
    STDMETHOD(GetRows)() = 0;
    STDMETHOD(Move)() = 0;
    STDMETHOD(MoveNext)() = 0;
    STDMETHOD(MovePrevious)() = 0;
    STDMETHOD(MoveFirst)() = 0;
    STDMETHOD(MoveLast)() = 0;
    STDMETHOD(Open)(VARIANT source, VARIANT connection, long cursor, long lock, long options) = 0;
    STDMETHOD(Requery)() = 0;
    STDMETHOD(OldResync)() = 0;
    STDMETHOD(Update)(VARIANT fields, VARIANT values) = 0;
};

}  // namespace intake
