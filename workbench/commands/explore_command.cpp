#include <algorithm>
#include <array>
#include <cstdio>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/Redaction.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/environment.h"
#include "workbench/cli/one_load.h"
#include "workbench/cli/page_size.h"
#include "workbench/cli/probe_settings.h"
#include "workbench/cli/source_settings.h"
#include "workbench/commands/commands.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/database/open_database.h"
#include "workbench/probe/explore/explore_source.h"
#include "workbench/probe/fetch/source_start.h"
#include "workbench/probe/kinds.h"
#include "workbench/probe/words.h"

namespace workbench {

namespace {

using probe::Explored;
using probe::OutlineEntry;

std::string settingsText(const probe::Proposal& settings) {
    std::string text;
    for (const auto& [name, value] : settings)
        text += (text.empty() ? "" : " ") + asArgument(name + "=" + value).substr(1);
    return text;
}

using Row = std::array<std::string, 4>;  // all but the settings

/// On a terminal no more of a name or a value than shows what it is.
constexpr Row header{"records", "name", "kind", "first value"};
constexpr std::array<std::size_t, 4> mostColumns{10, 28, 40, 24};

Row rowOf(const OutlineEntry& entry, bool isCut) {
    Row row{entry.records ? std::to_string(*entry.records) : "",
            std::string(2 * entry.depth, ' ') + entry.name, entry.kind, entry.value};
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = isCut ? fitted(row[i], mostColumns[i]) : printable(row[i]);
    return row;
}

std::string paddedLeft(const std::string& text, std::size_t width) {
    return std::string(width - displayWidth(text), ' ') + text;
}

std::string padded(const std::string& text, std::size_t width) {
    return text + std::string(width - displayWidth(text), ' ');
}

std::string lineOf(const Row& row, const std::array<std::size_t, 4>& widths,
                   const std::string& last) {
    std::string line = paddedLeft(row[0], widths[0]);
    for (std::size_t i = 1; i < row.size(); ++i)
        line += "  " + padded(row[i], widths[i]);
    line += "  " + last;
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

/// "league.json is JSON, 7.1 kB".
std::string headOf(const std::string& source, const Explored& explored) {
    return source + " is " + explored.words +
           (explored.bytes ? ", " + probe::sizeText(*explored.bytes) : "");
}

/// What was not looked at; nothing when all was.
std::string notKeptText(const probe::Outline& outline) {
    if (outline.notKept == 0) return "";
    return "The source has more names than there is room for: " +
           probe::counted(outline.notKept, "name") + " further on were not looked at.\n";
}

/// What stands behind the page; nothing when nothing does.
std::string leftOutText(const probe::Outline& outline) {
    if (outline.leftOut == 0) return "";
    const std::string count = outline.total ? std::to_string(outline.leftOut) + " " : "";
    return "(" + count +
           "more; --limit lists more, --from goes on, --at goes down, --find searches)\n";
}

/// A table whose last column, the settings, is never cut: it is there to be copied.
std::string asTable(const std::string& source, const Explored& explored, bool isCut) {
    std::vector<Row> rows;
    for (const OutlineEntry& entry : explored.outline.entries)
        rows.push_back(rowOf(entry, isCut));
    std::array<std::size_t, 4> widths{};
    for (std::size_t i = 0; i < widths.size(); ++i) {
        widths[i] = displayWidth(header[i]);
        for (const Row& row : rows)
            widths[i] = std::max(widths[i], displayWidth(row[i]));
    }
    std::string text = headOf(source, explored) + "\n";
    text += lineOf(header, widths, "select it by");
    for (std::size_t i = 0; i < rows.size(); ++i)
        text += lineOf(rows[i], widths, settingsText(explored.outline.entries[i].settings));
    return text + leftOutText(explored.outline) + notKeptText(explored.outline);
}

/// What is said in the place of a table without rows.
std::string nothingText(const std::string& source, const Explored& explored,
                        const Options& options) {
    const std::size_t total = explored.outline.total.value_or(0);
    const std::string words =
        options.limit == 0 ? "Nothing is listed: --limit is 0."
        : total > 0
            ? "Only " + std::to_string(total) + " can be listed: --from passes over them all."
        : options.find.empty()
            ? "Nothing in it can be selected."
            : "Nothing in it has " + probe::quoted(options.find) + " in its name or its values.";
    return headOf(source, explored) + ".\n" + words + "\n" + notKeptText(explored.outline);
}

/// A source as an argument; a file whose name begins as an option does is named by its folder.
std::string sourceArgument(const std::string& source) {
    return asArgument((source.starts_with('-') ? "./" : "") + source).substr(7);
}

/// How to go on from what was shown. `source` is empty for what is named by settings alone.
std::string advice(const std::string& source, const Explored& explored) {
    const auto& entries = explored.outline.entries;
    const auto selectable =
        std::find_if(entries.begin(), entries.end(), [](const OutlineEntry& entry) {
            return !entry.settings.empty() && entry.records.value_or(2) > 1;
        });
    if (selectable == entries.end()) return "";
    const probe::Proposal& settings = selectable->settings;
    const bool hasMode = std::any_of(settings.begin(), settings.end(),
                                     [](const auto& each) { return each.first == "mode"; });
    const std::string named =
        source.empty() ? settingsText(explored.source) : sourceArgument(source);
    return "\nLoad one, for example: intake-workbench load " + named +
           (hasMode ? " " : " --set mode=DataArray ") + settingsText(settings) + "\n";
}

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

std::string asJson(const std::string& source, const Explored& explored, std::size_t from) {
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

void hideAll(const Redaction& redact, std::vector<std::string>& texts) {
    for (std::string& text : texts)
        text = redact(text);
}

void hideIn(const Redaction& redact, probe::Proposal& settings) {
    for (auto& setting : settings)
        setting.second = redact(setting.second);
}

/// A server may send back what it was asked with.
void hide(const Redaction& redact, Explored& explored) {
    explored.words = redact(explored.words);
    hideIn(redact, explored.source);
    for (OutlineEntry& entry : explored.outline.entries) {
        for (std::string* text : {&entry.name, &entry.kind, &entry.value, &entry.place})
            *text = redact(*text);
        hideIn(redact, entry.settings);
        if (entry.where) hideIn(redact, entry.where->settings);
        hideAll(redact, entry.selectors);
        entry.key = redact(entry.key);
    }
    if (!explored.outline.preview) return;
    hideAll(redact, explored.outline.preview->columns);
    hideAll(redact, explored.outline.preview->places);
    for (std::vector<std::string>& row : explored.outline.preview->rows)
        hideAll(redact, row);
}

/// A text lists what can be selected; programs get all that is known of it.
probe::OutlineWish wishOf(const Options& options) {
    return {options.at,
            options.find,
            options.limit,
            options.from,
            options.output == Output::Json,
            options.countsRows};
}

/// The instance is set as the options say; a bare source is looked at here.
probe::Settings settingsToExplore(lumo::Host& host, const lumo::Plugin& plugin, Options options) {
    lumo::Instance instance(host, plugin, "workbench");
    placeInstance(host, instance, options);
    if (!options.source.empty())
        options.settings.insert(options.settings.begin(), "filename=" + options.source);
    options.source.clear();
    applySettings(host, instance, options);
    const probe::Settings settings = probeSettings(host.parameters, instance.record());
    if (settings.filename.empty() && settings.connStr.empty())
        throw UsageError("Give a source to explore: a file or a URL.");
    return settings;
}

}  // namespace

ExitStatus runExplore(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                      const StandardStreams& streams) {
    const probe::Settings settings = settingsToExplore(host, plugin, options);
    const Redaction redact(settings);
    const bool isDatabase =
        settings.queryMode == probe::QueryType::Sql && !settings.connStr.empty();
    const std::string address = redact(isDatabase ? probe::placeOfDatabase(settings.connStr)
                                                  : probe::withoutUserInfo(settings.filename));
    const std::string source = printable(address);
    try {
        Explored explored = probe::exploreSource(settings, wishOf(options), options.timeoutSeconds);
        hide(redact, explored);
        const PageSize page = pageSize(streams.resultColumns(), columnsFromEnvironment());
        streams.writeResult(options.output == Output::Json ? asJson(address, explored, options.from)
                            : explored.outline.entries.empty()
                                ? nothingText(source, explored, options)
                                : asTable(source, explored, page.columns != unlimited) +
                                      advice(isDatabase ? "" : address, explored));
        return ExitStatus::Loaded;
    } catch (const probe::DatabaseFailure& failure) {
        const std::string text =
            printable(redact(address + ": " + failure.what() + " " + failure.next));
        std::fprintf(stderr, "%s\n", text.c_str());
        return ExitStatus::LoadFailed;
    } catch (const probe::LookFailure& failure) {
        std::fprintf(stderr, "%s %s.\n", source.c_str(), printable(redact(failure.what())).c_str());
        return ExitStatus::LoadFailed;
    }
}

}  // namespace workbench
