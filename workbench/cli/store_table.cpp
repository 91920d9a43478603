#include "workbench/cli/store_table.h"

#include <algorithm>
#include <set>

#include "workbench/cli/display_text.h"
#include "workbench/cli/value_text.h"

namespace workbench {

namespace {

using cobalt::Entries;
using cobalt::Field;
using cobalt::Kind;
using cobalt::Value;

std::string cellText(const Value* value) {
    return value == nullptr ? "" : inlineText(*value);
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

bool isStructure(const Value& value) {
    return unwrapped(value).kind() == Kind::Structure;
}

bool holdsRecords(const Value& array) {
    const Entries& elements = array.entries();
    return !elements.empty() && std::all_of(elements.begin(), elements.end(),
                                            [](const auto& e) { return isStructure(e.value); });
}

// The members of the records, each once, in the order in which they first appear.
std::vector<std::string> memberNames(const Entries& records, std::size_t count) {
    std::vector<std::string> names;
    std::set<std::string> known;
    for (std::size_t i = 0; i < count; ++i) {
        for (const cobalt::Entry& member : unwrapped(records[i].value).entries()) {
            if (known.insert(member.key).second) names.push_back(member.key);
        }
    }
    return names;
}

Table recordTable(const Field& field, std::size_t maximumRows) {
    const Entries& records = field.value().entries();
    const std::size_t shown = std::min(records.size(), maximumRows);
    const std::vector<std::string> names = memberNames(records, shown);
    Table table{toUtf8(field.name()) + " (" + counted(records.size(), "record") + ")",
                {isList(field.value()) ? "index" : "key"},
                {},
                records.size() - shown};
    for (const std::string& name : names)
        table.header.push_back(toUtf8(name));
    for (std::size_t i = 0; i < shown; ++i) {
        std::vector<std::string> row{toUtf8(records[i].key)};
        for (const std::string& name : names)
            row.push_back(cellText(unwrapped(records[i].value).entries().find(name)));
        table.rows.push_back(std::move(row));
    }
    return table;
}

Table entryTable(const Field& field, const std::string& what, const std::string& keyHeader,
                 std::size_t maximumRows) {
    const Entries& entries = unwrapped(field.value()).entries();
    const std::size_t shown = std::min(entries.size(), maximumRows);
    Table table{toUtf8(field.name()) + " (" + counted(entries.size(), what) + ")",
                {keyHeader, "value"},
                {},
                entries.size() - shown};
    for (std::size_t i = 0; i < shown; ++i)
        table.rows.push_back({toUtf8(entries[i].key), inlineText(entries[i].value)});
    return table;
}

Table fieldTable(const Field& field, std::size_t maximumRows) {
    const Value& value = field.value();
    if (value.kind() == Kind::Structure) return entryTable(field, "member", "name", maximumRows);
    if (holdsRecords(value)) return recordTable(field, maximumRows);
    return entryTable(field, "element", isList(value) ? "index" : "key", maximumRows);
}

Table plainFields(const cobalt::Store& store) {
    Table table{"", {"field", "value"}, {}, 0};
    for (const Field& field : store) {
        if (field.value().isScalar())
            table.rows.push_back({toUtf8(field.name()), toUtf8(field.value().text())});
    }
    return table;
}

Table memoryTable(const lumo::SharedMemory& memory) {
    Table table{"Shared memory (" + memory.name() + ")", {"variable", "value"}, {}, 0};
    for (const auto& [key, value] : memory.values())
        table.rows.push_back({toUtf8(key), toUtf8(value)});
    return table;
}

}  // namespace

std::string storeTables(const cobalt::Store& store, const lumo::SharedMemories& memories,
                        const PageSize& page) {
    std::string out;
    const auto add = [&](const Table& table) {
        if (table.rows.empty() && table.title.empty()) return;
        if (!out.empty()) out += '\n';
        out += table.print(page);
    };
    for (const Field& field : store) {
        if (!field.value().isScalar()) add(fieldTable(field, page.rows));
    }
    add(plainFields(store));
    for (const lumo::SharedMemory* memory : memories.all()) {
        if (!memory->values().empty()) add(memoryTable(*memory));
    }
    return out.empty() ? "The store is empty.\n" : out;
}

Table recordsOf(const cobalt::Store& loaded, std::size_t maximumRows) {
    std::vector<const Field*> fields;
    for (const Field& field : loaded) {
        if (!field.value().isScalar()) fields.push_back(&field);
    }
    if (fields.empty()) return plainFields(loaded);
    if (fields.size() == 1) return fieldTable(*fields.front(), maximumRows);
    Entries structures;
    for (const Field* const field : fields)
        structures.define(field->name()) = field->value();
    Field all("");
    all.set(Value::array(std::move(structures)), {});
    return fieldTable(all, maximumRows);
}

}  // namespace workbench
