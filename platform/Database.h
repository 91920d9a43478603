#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/source/EndMark.h"

namespace intake {

/// What kind of value a field holds. The numbers are those of OLE automation's variants, on every
/// system; flags such as VT_ARRAY may be added to them.
enum VariantType : uint16_t {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_LPSTR = 30,
    VT_LPWSTR = 31,
    VT_ARRAY = 0x2000,
};

/// One value of a record. Which member counts follows from the type: `integer` for the signed
/// integers and VT_BOOL, `natural` for the unsigned ones, `number` for VT_R4, VT_R8 and
/// VT_DECIMAL, unless `text` holds such a number as a plain decimal; `text` for the texts; none for
/// the others.
struct FieldValue {
    VariantType type = VT_EMPTY;
    union {
        int64_t integer = 0;
        uint64_t natural;
        double number;
    };
    std::string_view
        text;  // in UTF-8; lent until the recordset moves or another value is asked for
};

/// The records of a query's result, read forward once. Made and used on one worker thread; does not
/// outlive its connection. What fails throws PlatformError.
class Recordset {
public:
    virtual ~Recordset() = default;

    virtual size_t fieldCount() = 0;

    /// Lent until the recordset goes. In UTF-8.
    virtual std::string_view fieldName(size_t field) = 0;

    /// The position of the field of that name, without regard to case.
    virtual std::optional<size_t> findField(const std::string& name) = 0;

    /// Only where there is a record.
    virtual void moveFirst() = 0;
    virtual void moveNext() = 0;
    virtual bool atEnd() = 0;

    /// The value of a field of the current record; false when the field cannot be taken from the
    /// field collection.
    virtual bool value(size_t field, FieldValue& value) = 0;
};

/// A connection to a database. Made and used on one worker thread; closed at the end of its life.
class Connection {
public:
    struct Error {
        uint32_t number;
        std::string description;
    };

    virtual ~Connection() = default;

    /// Opens it by a connection string, without user name and password of its own. Throws
    /// PlatformError; errors() may say more.
    virtual void open(const std::string& connectionString) = 0;

    /// Runs a query. Throws PlatformError, also for a statement that has no result set; errors()
    /// may say more.
    virtual std::unique_ptr<Recordset> openRecordset(const std::string& query) = 0;

    /// What the database itself reported about the last failure, in its order; may be empty.
    virtual std::vector<Error> errors() = 0;

    /// What the log should say of a connection that is open, as whole sentences.
    virtual std::vector<std::string> warnings() { return {}; }
};

/// Makes connections. Process-wide; any thread.
class DatabaseServices {
public:
    virtual ~DatabaseServices() = default;

    /// Throws PlatformError when the system has no databases to offer. Once `endMark`, which
    /// outlives the connection, is set, whatever blocks gives up soon.
    virtual std::unique_ptr<Connection> createConnection(const EndMark& endMark) = 0;
};

}  // namespace intake
