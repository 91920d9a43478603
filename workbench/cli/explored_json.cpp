#include "workbench/cli/explored_json.h"

#include <array>
#include <optional>
#include <vector>

#include "workbench/cli/JsonWriter.h"

namespace workbench {

namespace {

using probe::Explored;
using probe::OutlineEntry;

void writeCount(std::optional<std::size_t> count, JsonWriter& out) {
    if (count) {
        out.number(static_cast<double>(*count));
    } else {
        out.null();
    }
}

void writeSettings(const probe::Proposal& settings, JsonWriter& out) {
    out.name("set");
    out.open('{');
    for (const auto& [name, value] : settings) {
        out.name(name);
        out.text(value);
    }
    out.close('}');
}

constexpr std::array typeNames{"value", "heading", "table", "view", "sheet", "column"};

void writeTexts(const char* name, const std::vector<std::string>& texts, JsonWriter& out) {
    out.name(name);
    out.open('[');
    for (const std::string& text : texts)
        out.text(text);
    out.close(']');
}

/// What only some types of entries have.
void writeDetails(const OutlineEntry& entry, JsonWriter& out) {
    out.name("type");
    out.text(typeNames[static_cast<std::size_t>(entry.type)]);
    if (entry.type == probe::EntryType::Column) {
        out.name("key");
        out.text(entry.key);
    }
    if (entry.type == probe::EntryType::Sheet) {
        out.name("hidden");
        out.boolean(entry.isHidden);
    }
    if (entry.size) {
        out.name("rows");
        out.number(static_cast<double>(entry.size->rows));
        out.name("columns");
        out.number(static_cast<double>(entry.size->columns));
    }
    if (!entry.selectors.empty()) writeTexts("selectors", entry.selectors, out);
    if (!entry.where) return;
    out.name("where");
    out.open('{');
    writeSettings(entry.where->settings, out);
    out.name("records");
    out.number(static_cast<double>(entry.where->records));
    out.close('}');
}

void writePreview(const probe::Preview& preview, JsonWriter& out) {
    out.name("preview");
    out.open('{');
    writeTexts("columns", preview.columns, out);
    out.name("rows");
    out.open('[');
    for (const std::vector<std::string>& row : preview.rows) {
        out.open('[');
        for (const std::string& cell : row)
            out.text(cell);
        out.close(']');
    }
    out.close(']');
    if (!preview.places.empty()) writeTexts("places", preview.places, out);
    out.name("from");
    out.number(0.0);
    out.name("leftOut");
    writeCount(preview.leftOut, out);
    out.close('}');
}

void writeEntry(const OutlineEntry& entry, JsonWriter& out) {
    const auto text = [&](const char* name, const std::string& value) {
        out.name(name);
        out.text(value);
    };
    out.open('{');
    text("name", entry.name);
    out.name("depth");
    out.number(static_cast<double>(entry.depth));
    text("kind", entry.kind);
    out.name("records");
    writeCount(entry.records, out);
    text("value", entry.value);
    text("place", entry.place);
    writeSettings(entry.settings, out);
    writeDetails(entry, out);
    out.close('}');
}

}  // namespace

std::string exploredJson(const std::string& source, const Explored& explored, std::size_t from) {
    JsonWriter out;
    out.open('{');
    out.name("source");
    out.text(source);
    out.name("kind");
    out.text(explored.words);
    for (const auto& [name, value] : explored.source)
        out.member(name, value);
    out.name("bytes");
    writeCount(explored.bytes, out);
    out.name("from");
    out.number(static_cast<double>(from));
    out.name("total");
    writeCount(explored.outline.total, out);
    out.name("leftOut");
    out.number(static_cast<double>(explored.outline.leftOut));
    out.name("notKept");
    out.number(static_cast<double>(explored.outline.notKept));
    out.name("entries");
    out.open('[');
    for (const OutlineEntry& entry : explored.outline.entries)
        writeEntry(entry, out);
    out.close(']');
    if (explored.outline.preview) writePreview(*explored.outline.preview, out);
    out.close('}');
    return out.take();
}

}  // namespace workbench
