#include "workbench/probe/explore/database_outline.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "formats/text/fold_case.h"
#include "workbench/probe/database/sql_names.h"
#include "workbench/probe/explore/OutlinePage.h"
#include "workbench/probe/explore/Wanted.h"
#include "workbench/probe/explore/preview_cell.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

class DatabaseOutline {
public:
    DatabaseOutline(Database& database, const OutlineWish& wish)
        : database_(database), wish_(wish), wanted_(wish.find), page_(wish) {}

    Outline make() {
        Outline outline = page();
        outline.preview = std::move(preview_);
        return outline;
    }

private:
    Outline page() {
        std::vector<std::string> names;
        bool isThere = wish_.place.empty();
        const std::vector<TableEntry> tables = database_.tables();
        const bool isExact = std::any_of(tables.begin(), tables.end(), [&](const auto& table) {
            return placeOf(table) == wish_.place;
        });
        for (const TableEntry& table : tables) {
            names.push_back(placeOf(table));
            if (!wish_.place.empty() && !isMeant(names.back(), isExact)) continue;
            // The database is asked for the columns of each table anew.
            if (page_.isPassed()) return page_.takeUncounted();
            isThere = true;
            addTable(table);
        }
        if (isThere) return page_.take();
        throw LookFailure("has no table " + quoted(wish_.place) + ", but " + listOf(names));
    }

    /// Some databases tell "Heats" from "heats".
    bool isMeant(const std::string& place, bool isExact) const {
        if (isExact) return place == wish_.place;
        return intake::foldCase(place) == intake::foldCase(wish_.place);
    }

    static std::string placeOf(const TableEntry& table) {
        return table.schema.empty() ? table.name : table.schema + "." + table.name;
    }

    bool holds(const std::string& name) const { return wanted_.isNone() || wanted_.isIn(name); }

    void addTable(const TableEntry& table) {
        const std::string written = writtenName(table, database_);
        if (holds(table.name)) page_.add(tableEntry(table, written));
        std::vector<std::string> listed;
        for (const ColumnEntry& column : database_.columns(table)) {
            if (!holds(column.name)) continue;
            if (page_.wantsNext()) listed.push_back(column.name);
            page_.add(columnEntry(column, written));
        }
        const bool isPreviewed =
            wish_.isWhole && !wish_.place.empty() && database_.isHeldToReading();
        if (isPreviewed) preview_ = previewOf(written, listed);
    }

    OutlineEntry tableEntry(const TableEntry& table, const std::string& written) {
        OutlineEntry entry;
        entry.name = placeOf(table);
        entry.kind = table.isView ? "view" : "table";
        entry.place = entry.name;
        entry.settings = {{"query", "SELECT * FROM " + written}};
        entry.type = table.isView ? EntryType::View : EntryType::Table;
        const bool isCounted = wish_.countsRows && page_.wantsNext() && database_.isHeldToReading();
        if (isCounted) entry.records = countOf(written);
        return entry;
    }

    OutlineEntry columnEntry(const ColumnEntry& column, const std::string& table) const {
        OutlineEntry entry;
        entry.depth = 1;
        entry.name = column.name;
        entry.kind = column.type.empty() ? "column" : column.type;
        entry.settings = {
            {"query", "SELECT " + writtenName(column.name, database_) + " FROM " + table}};
        entry.type = EntryType::Column;
        entry.key = column.name;
        return entry;
    }

    std::optional<std::size_t> countOf(const std::string& table) {
        const auto rows = database_.query("SELECT COUNT(*) FROM " + table);
        std::size_t count = 0;
        const std::string text = rows->next() ? rows->value(0).value_or("") : "";
        const char* const end = text.data() + text.size();
        if (std::from_chars(text.data(), end, count).ptr != end) return std::nullopt;
        return count;
    }

    Preview previewOf(const std::string& table, const std::vector<std::string>& columns) {
        Preview preview{columns, {}, 0};
        if (columns.empty()) return preview;
        std::string list;
        for (const std::string& column : columns)
            list += (list.empty() ? "" : ", ") + writtenName(column, database_);
        const auto rows = database_.query(database_.queryForFirst(mostPreviewed + 1, list, table));
        while (rows->next()) {
            if (preview.rows.size() == mostPreviewed) {
                preview.leftOut.reset();
                break;
            }
            std::vector<std::string>& row = preview.rows.emplace_back();
            for (std::size_t i = 0; i < columns.size(); ++i)
                row.push_back(previewCell(rows->value(i).value_or("")));
        }
        return preview;
    }

    Database& database_;
    const OutlineWish& wish_;
    const Wanted wanted_;
    OutlinePage page_;
    std::optional<Preview> preview_;  // of the table that is asked for
};

}  // namespace

Outline databaseOutline(Database& database, const OutlineWish& wish) {
    return DatabaseOutline(database, wish).make();
}

}  // namespace probe
