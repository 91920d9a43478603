#include "workbench/probe/database/OdbcDatabase.h"

#include <algorithm>
#include <array>

#include "formats/text/utf16.h"
#include "workbench/probe/database/OdbcRows.h"
#include "workbench/probe/database/odbc_connect.h"
#include "workbench/probe/database/odbc_text.h"

namespace probe {

namespace {

struct Product {
    const char* name;
    const char* reading;        // the statement by which transactions only read
    const char* defaultSchema;  // that a query need not name
    const char* first;          // before the columns of a query for so many rows
    const char* last;           // behind it
};

constexpr std::array products{
    Product{"PostgreSQL", "SET SESSION CHARACTERISTICS AS TRANSACTION READ ONLY", "public", "",
            " LIMIT "},
    Product{"MariaDB", "SET SESSION TRANSACTION READ ONLY", "", "", " LIMIT "},
    Product{"MySQL", "SET SESSION TRANSACTION READ ONLY", "", "", " LIMIT "},
    Product{"Microsoft SQL Server", nullptr, "dbo", "TOP ", ""},
};

const Product* productOf(const std::string& name) {
    const auto* const found = std::find_if(products.begin(), products.end(),
                                           [&](const Product& each) { return name == each.name; });
    return found == products.end() ? nullptr : found;
}

std::string defaultSchemaOf(const std::string& product) {
    const Product* const known = productOf(product);
    return known == nullptr ? "" : known->defaultSchema;
}

/// Wide functions take texts that are not theirs to change without const.
struct WideText {
    explicit WideText(const std::string& text) : units(intake::toUtf16(text)) {}
    SQLWCHAR* get() { return units.empty() ? nullptr : reinterpret_cast<SQLWCHAR*>(units.data()); }
    std::u16string units;
};

/// A version without the zeros that fill its parts up: "10.11.000019".
std::string withoutZeros(const std::string& version) {
    std::string text;
    for (std::size_t i = 0; i < version.size(); ++i) {
        const bool isFirst = i == 0 || version[i - 1] == '.';
        while (isFirst && version[i] == '0' && i + 1 < version.size() && version[i + 1] != '.')
            ++i;
        text += version[i];
    }
    return text;
}

std::string textOf(SQLHSTMT statement, SQLUSMALLINT column) {
    std::string text;
    readText(statement, column, text);
    return text;
}

}  // namespace

OdbcDatabase::OdbcDatabase(const intake::ConnectionString& odbc, const std::string& written,
                           Deadline end)
    : handles_(connectOdbc(odbc, written, end)),
      end_(end),
      product_(infoOf(handles_->connection(), SQL_DBMS_NAME)),
      isHeldToReading_(beginReading()) {
    SQLSetConnectAttr(handles_->connection(), SQL_ATTR_AUTOCOMMIT,
                      reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF), SQL_IS_UINTEGER);
}

/// Whether all transactions that follow only read.
bool OdbcDatabase::beginReading() const {
    const Product* const known = productOf(product_);
    if (known == nullptr || known->reading == nullptr) return false;
    const OdbcStatementHandle statement(handles_->connection());
    WideText text(known->reading);
    return SQL_SUCCEEDED(SQLExecDirectW(statement.get(), text.get(), SQL_NTS));
}

std::string OdbcDatabase::words() const {
    return "a database of " + (product_.empty() ? "an unknown make" : product_) + " " +
           withoutZeros(infoOf(handles_->connection(), SQL_DBMS_VER));
}

std::vector<TableEntry> OdbcDatabase::tables() {
    const OdbcStatementHandle statement(handles_->connection());
    const std::string database = infoOf(handles_->connection(), SQL_DATABASE_NAME);
    WideText types("TABLE,VIEW");
    std::vector<TableEntry> tables;
    const SQLRETURN result =
        SQLTablesW(statement.get(), nullptr, 0, nullptr, 0, nullptr, 0, types.get(), SQL_NTS);
    while (SQL_SUCCEEDED(result) && SQL_SUCCEEDED(SQLFetch(statement.get()))) {
        const std::string catalog = textOf(statement.get(), 1);
        const std::string schema = textOf(statement.get(), 2);
        const std::string name = textOf(statement.get(), 3);
        const bool isView = textOf(statement.get(), 4) == "VIEW";
        const bool isOurs = catalog.empty() || database.empty() || catalog == database;
        const bool isDefault = schema == defaultSchemaOf(product_);
        if (isOurs) tables.push_back({isDefault ? "" : schema, name, isView});
    }
    return tables;
}

std::vector<ColumnEntry> OdbcDatabase::columns(const TableEntry& table) {
    const OdbcStatementHandle statement(handles_->connection());
    WideText schema(table.schema.empty() ? defaultSchemaOf(product_) : table.schema);
    WideText name(table.name);
    std::vector<ColumnEntry> columns;
    const SQLRETURN result = SQLColumnsW(statement.get(), nullptr, 0, schema.get(),
                                         static_cast<SQLSMALLINT>(schema.units.size()), name.get(),
                                         static_cast<SQLSMALLINT>(name.units.size()), nullptr, 0);
    while (SQL_SUCCEEDED(result) && SQL_SUCCEEDED(SQLFetch(statement.get()))) {
        const std::string found = textOf(statement.get(), 3);  // a pattern may fit others
        std::string column = textOf(statement.get(), 4);
        if (found == table.name) columns.push_back({std::move(column), textOf(statement.get(), 6)});
    }
    return columns;
}

std::string OdbcDatabase::queryForFirst(std::size_t rows, const std::string& columns,
                                        const std::string& table) const {
    const Product* const known = productOf(product_);
    const auto with = [&](const char* word) { return word + std::to_string(rows); };
    const bool isTop = known != nullptr && *known->first != '\0';
    const bool isLimit = known != nullptr && *known->last != '\0';
    return "SELECT " + (isTop ? with(known->first) + " " : "") + columns + " FROM " + table +
           (isLimit ? with(known->last) : "");
}

std::unique_ptr<Rows> OdbcDatabase::query(const std::string& query) {
    return std::make_unique<OdbcRows>(handles_->connection(), query, end_);
}

char OdbcDatabase::quote() const {
    const std::string quote = infoOf(handles_->connection(), SQL_IDENTIFIER_QUOTE_CHAR);
    return quote.empty() || quote == " " ? '"' : quote.front();
}

}  // namespace probe
