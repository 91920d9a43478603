#include <algorithm>
#include <array>
#include <cstdio>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/Redaction.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/commands.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/environment.h"
#include "workbench/cli/one_load.h"
#include "workbench/cli/page_size.h"
#include "workbench/cli/probe_settings.h"
#include "workbench/cli/source_settings.h"
#include "workbench/probe/LookFailure.h"
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
    Row row{std::to_string(entry.records), std::string(2 * entry.depth, ' ') + entry.name,
            entry.kind, entry.value};
    for (std::size_t i = 0; isCut && i < row.size(); ++i)
        row[i] = fitted(row[i], mostColumns[i]);
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

/// What was not looked at; nothing when all was.
std::string notKeptText(const probe::Outline& outline) {
    if (outline.notKept == 0) return "";
    return "The source has more names than there is room for: " +
           probe::counted(outline.notKept, "name") + " further on were not looked at.\n";
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
    std::string text =
        source + " is " + explored.words + ", " + probe::sizeText(explored.bytes) + "\n";
    text += lineOf(header, widths, "select it by");
    for (std::size_t i = 0; i < rows.size(); ++i)
        text += lineOf(rows[i], widths, settingsText(explored.outline.entries[i].settings));
    if (explored.outline.leftOut > 0)
        text += "(" + std::to_string(explored.outline.leftOut) +
                " more; --limit lists more, --at goes down, --find searches)\n";
    return text + notKeptText(explored.outline);
}

/// What is said in the place of a table without rows.
std::string nothingText(const std::string& source, const Explored& explored,
                        const std::string& wanted) {
    return source + " is " + explored.words + ", " + probe::sizeText(explored.bytes) + ".\n" +
           (wanted.empty()
                ? "Nothing in it can be selected.\n"
                : "Nothing in it has " + probe::quoted(wanted) + " in its name or its values.\n") +
           notKeptText(explored.outline);
}

/// How to go on from what was shown.
std::string advice(const std::string& source, const Explored& explored) {
    const auto& entries = explored.outline.entries;
    const auto selectable = std::find_if(
        entries.begin(), entries.end(),
        [](const OutlineEntry& entry) { return !entry.settings.empty() && entry.records > 1; });
    if (selectable == entries.end()) return "";
    const probe::Proposal& settings = selectable->settings;
    const bool hasMode = std::any_of(settings.begin(), settings.end(),
                                     [](const auto& each) { return each.first == "mode"; });
    return "\nLoad one, for example: intake-workbench load " + asArgument(source).substr(7) +
           (hasMode ? " " : " --set mode=DataArray ") + settingsText(settings) + "\n";
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
    out.number(static_cast<double>(entry.records));
    text("value", entry.value);
    text("place", entry.place);
    out.name("set");
    out.open('{');
    for (const auto& [name, value] : entry.settings)
        text(name.c_str(), value);
    out.close('}');
    out.close('}');
}

std::string asJson(const std::string& source, const Explored& explored) {
    JsonWriter out;
    out.open('{');
    out.name("source");
    out.text(source);
    out.name("kind");
    out.text(explored.words);
    out.name("queryMode");
    out.text(probe::valueOf(explored.queryMode));
    out.name("bytes");
    out.number(static_cast<double>(explored.bytes));
    out.name("leftOut");
    out.number(static_cast<double>(explored.outline.leftOut));
    out.name("entries");
    out.open('[');
    for (const OutlineEntry& entry : explored.outline.entries)
        writeEntry(entry, out);
    out.close(']');
    out.close('}');
    return out.take();
}

/// A server may send back what it was asked with.
void hide(const Redaction& redact, Explored& explored) {
    explored.words = redact(explored.words);
    for (OutlineEntry& entry : explored.outline.entries) {
        for (std::string* text : {&entry.name, &entry.kind, &entry.value, &entry.place})
            *text = redact(*text);
        for (auto& setting : entry.settings)
            setting.second = redact(setting.second);
    }
}

}  // namespace

ExitStatus runExplore(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                      const StandardStreams& streams) {
    lumo::Instance instance(host, plugin, "workbench");
    placeInstance(host, instance, options);
    Options settingsOnly = options;
    settingsOnly.source.clear();  // it is looked at here
    if (!options.source.empty())
        settingsOnly.settings.insert(settingsOnly.settings.begin(), "filename=" + options.source);
    applySettings(host, instance, settingsOnly);
    const probe::Settings settings = probeSettings(host.parameters, instance.record());
    if (settings.filename.empty()) throw UsageError("Give a source to explore: a file or a URL.");
    const Redaction redact(settings);
    const std::string source = redact(probe::withoutUserInfo(settings.filename));
    try {
        Explored explored = probe::exploreSource(
            settings, {options.at, options.find, options.limit}, options.timeoutSeconds);
        hide(redact, explored);
        if (options.output == Output::Json) {
            streams.writeResult(asJson(source, explored));
            return ExitStatus::Loaded;
        }
        if (explored.outline.entries.empty()) {
            streams.writeResult(nothingText(source, explored, options.find));
            return ExitStatus::Loaded;
        }
        const PageSize page = pageSize(streams.resultColumns(), columnsFromEnvironment());
        const bool isCut = page.columns != unlimited;
        streams.writeResult(asTable(source, explored, isCut) + advice(source, explored));
        return ExitStatus::Loaded;
    } catch (const probe::LookFailure& failure) {
        std::fprintf(stderr, "%s %s.\n", source.c_str(), redact(failure.what()).c_str());
        return ExitStatus::LoadFailed;
    }
}

}  // namespace workbench
