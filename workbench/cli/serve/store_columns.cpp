#include "workbench/cli/serve/store_columns.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <vector>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/value_text.h"
#include "workbench/cobalt/number_text.h"

namespace workbench {

namespace {

using cobalt::Entry;
using cobalt::Kind;
using cobalt::Value;

constexpr std::size_t mostRecords = 10'000;
constexpr std::size_t mostColumns = 200;
constexpr int deepest = 4;

std::optional<double> numberOf(const Value& value) {
    const auto number = value.isScalar() ? cobalt::parseNumber(value.text()) : std::nullopt;
    return number && std::isfinite(*number) ? number : std::nullopt;
}

/// Calls `visit` with the name and the value of each column that a record has.
template <class Visit>
void forEachColumn(const Value& value, const std::string& name, int depth, const Visit& visit) {
    if (value.kind() != Kind::Structure || depth == deepest)
        return visit(name.empty() ? "value" : name, value);
    for (const Entry& member : value.entries()) {
        const std::string whole = name.empty() ? member.key : name + "." + member.key;
        forEachColumn(member.value, whole, depth + 1, visit);
    }
}

std::size_t shownRecords(const Value& records) {
    return std::min(records.entries().size(), mostRecords);
}

struct Column {
    std::string name;
    std::size_t numbers = 0;
    std::size_t texts = 0;
    std::size_t others = 0;

    void count(const Value& value) {
        const bool isNumber = numberOf(value).has_value();
        ++(!isNumber ? others : value.kind() == Kind::Number ? numbers : texts);
    }
};

/// In the order in which records have them.
std::vector<Column> columnsOf(const Value& records) {
    std::vector<Column> columns;
    std::map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < shownRecords(records); ++i) {
        const auto count = [&](const std::string& name, const Value& value) {
            const auto known = places.find(name);
            if (known != places.end()) return columns[known->second].count(value);
            if (columns.size() == mostColumns) return;
            places[name] = columns.size();
            columns.push_back({name});
            columns.back().count(value);
        };
        forEachColumn(unwrapped(records.entries()[i].value), "", 0, count);
    }
    return columns;
}

/// The name in the records of a column that is told by this one; the same where there is none.
std::string nameInRecords(const Value& records, const std::string& told, const Redaction& redact) {
    for (const Column& column : columnsOf(records)) {
        if (redact(toUtf8(column.name)) == told) return column.name;
    }
    return told;
}

/// A column of one record; null where it has none.
const Value* valueIn(const Value& record, const std::string& column) {
    const Value* found = nullptr;
    forEachColumn(record, "", 0, [&](const std::string& name, const Value& value) {
        if (name == column) found = &value;
    });
    return found;
}

template <class Write>
void writeList(const char* name, std::size_t count, JsonWriter& out, const Write& write) {
    out.name(name);
    out.open('[');
    for (std::size_t i = 0; i < count; ++i)
        write(i);
    out.close(']');
}

}  // namespace

std::string columnsJson(const Value& records, const Redaction& redact) {
    const std::vector<Column> columns = columnsOf(records);
    JsonWriter out;
    out.open('{');
    writeList("columns", columns.size(), out, [&](std::size_t i) {
        out.open('{');
        out.member("name", redact(toUtf8(columns[i].name)));
        out.member("numbers", columns[i].numbers);
        out.member("texts", columns[i].texts);
        out.member("others", columns[i].others);
        out.close('}');
    });
    out.member("records", records.entries().size());
    out.close('}');
    return out.take();
}

std::string columnJson(const Value& records, const std::string& column, const Redaction& redact) {
    const cobalt::Entries& entries = records.entries();
    const std::size_t count = shownRecords(records);
    const std::string name = nameInRecords(records, column, redact);
    std::vector<const Value*> cells;
    for (std::size_t i = 0; i < count; ++i)
        cells.push_back(valueIn(unwrapped(entries[i].value), name));
    JsonWriter out(JsonWriter::Layout::OneLine);
    out.open('{');
    writeList("keys", count, out, [&](std::size_t i) { out.text(redact(toUtf8(entries[i].key))); });
    writeList("values", count, out, [&](std::size_t i) {
        const auto number = cells[i] == nullptr ? std::nullopt : numberOf(*cells[i]);
        const bool isShown = number && !redact.hides(startOf(*cells[i]));
        if (isShown) return out.number(*number);
        out.null();
    });
    writeList("written", count, out, [&](std::size_t i) {
        out.text(cells[i] == nullptr ? "" : redact(startOf(*cells[i])));
    });
    out.member("leftOut", entries.size() - count);
    out.close('}');
    return out.take();
}

}  // namespace workbench
