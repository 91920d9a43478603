#include "platform/linux/odbc/odbc_types.h"

#include <algorithm>
#include <array>

namespace intake {

namespace {

using enum OdbcFetch;

constexpr auto BYTES = static_cast<VariantType>(VT_ARRAY | VT_UI1);

struct TypeRow {
    SQLSMALLINT sqlType;
    OdbcType type;
    OdbcType unsignedType;
};

constexpr TypeRow integers(SQLSMALLINT sqlType, VariantType withSign, VariantType withoutSign) {
    return {sqlType, {withSign, SIGNED}, {withoutSign, UNSIGNED}};
}

constexpr TypeRow others(SQLSMALLINT sqlType, VariantType variant, OdbcFetch fetch) {
    return {sqlType, {variant, fetch}, {variant, fetch}};
}

constexpr std::array<TypeRow, 22> TYPES{{
    others(SQL_BIT, VT_BOOL, BOOLEAN),
    integers(SQL_TINYINT, VT_I1, VT_UI1),
    integers(SQL_SMALLINT, VT_I2, VT_UI2),
    integers(SQL_INTEGER, VT_I4, VT_UI4),
    integers(SQL_BIGINT, VT_I8, VT_UI8),
    others(SQL_REAL, VT_R4, NUMBER),
    others(SQL_FLOAT, VT_R8, NUMBER),
    others(SQL_DOUBLE, VT_R8, NUMBER),
    others(SQL_NUMERIC, VT_DECIMAL, DECIMAL),
    others(SQL_DECIMAL, VT_DECIMAL, DECIMAL),
    others(SQL_DATE, VT_DATE, NOTHING),
    others(SQL_TIME, VT_DATE, NOTHING),
    others(SQL_TIMESTAMP, VT_DATE, NOTHING),
    others(SQL_TYPE_DATE, VT_DATE, NOTHING),
    others(SQL_TYPE_TIME, VT_DATE, NOTHING),
    others(SQL_TYPE_TIMESTAMP, VT_DATE, NOTHING),
    // Time of day and time with an offset, as SQL Server's drivers number them.
    others(-154, VT_DATE, NOTHING),
    others(-155, VT_DATE, NOTHING),
    others(SQL_BINARY, BYTES, NOTHING),
    others(SQL_VARBINARY, BYTES, NOTHING),
    others(SQL_LONGVARBINARY, BYTES, NOTHING),
    others(SQL_GUID, VT_BSTR, TEXT),
}};

}  // namespace

OdbcType typeOfSql(SQLSMALLINT sqlType, bool isUnsigned) {
    const auto row = std::find_if(TYPES.begin(), TYPES.end(),
                                  [&](const TypeRow& each) { return each.sqlType == sqlType; });
    if (row == TYPES.end()) {
        return {VT_BSTR, TEXT};
    }
    return isUnsigned ? row->unsignedType : row->type;
}

}  // namespace intake
