#include "workbench/probe/explore/database_outline.h"

#include <algorithm>

#include "formats/text/fold_case.h"
#include "workbench/probe/database/sql_names.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

class DatabaseOutline {
public:
    DatabaseOutline(Database& database, const OutlineWish& wish)
        : database_(database), wish_(wish), wanted_(intake::foldCase(wish.find)) {}

    Outline make() {
        std::vector<std::string> names;
        for (const TableEntry& table : database_.tables()) {
            names.push_back(placeOf(table));
            const bool isMeant = wish_.place.empty() || isSame(wish_.place, names.back());
            if (isMeant) addTable(table);
        }
        const bool isThere =
            wish_.place.empty() || std::any_of(names.begin(), names.end(), [&](const auto& name) {
                return isSame(name, wish_.place);
            });
        if (isThere) return std::move(outline_);
        throw LookFailure("has no table " + quoted(wish_.place) + ", but " + listOf(names));
    }

private:
    static bool isSame(const std::string& one, const std::string& other) {
        return intake::foldCase(one) == intake::foldCase(other);
    }

    static std::string placeOf(const TableEntry& table) {
        return table.schema.empty() ? table.name : table.schema + "." + table.name;
    }

    bool isFull() const { return outline_.entries.size() >= wish_.most; }

    bool holds(const std::string& name) const {
        return wanted_.empty() || intake::foldCase(name).find(wanted_) != std::string::npos;
    }

    void add(OutlineEntry entry) {
        if (isFull()) {
            ++outline_.leftOut;
        } else {
            outline_.entries.push_back(std::move(entry));
        }
    }

    void addTable(const TableEntry& table) {
        const std::string from = " FROM " + writtenName(table, database_);
        const std::string place = placeOf(table);
        if (holds(table.name))
            add({0,
                 place,
                 table.isView ? "view" : "table",
                 std::nullopt,
                 "",
                 place,
                 {{"query", "SELECT *" + from}}});
        if (isFull() && wanted_.empty()) return;  // the columns of the others are not asked for
        for (const ColumnEntry& column : database_.columns(table)) {
            if (!holds(column.name)) continue;
            add({1,
                 column.name,
                 column.type.empty() ? "column" : column.type,
                 std::nullopt,
                 "",
                 "",
                 {{"query", "SELECT " + writtenName(column.name, database_) + from}}});
        }
    }

    Database& database_;
    const OutlineWish& wish_;
    const std::string wanted_;
    Outline outline_;
};

}  // namespace

Outline databaseOutline(Database& database, const OutlineWish& wish) {
    return DatabaseOutline(database, wish).make();
}

}  // namespace probe
