#include "workbench/cli/explored_text.h"

#include <algorithm>
#include <array>

#include "workbench/cli/display_text.h"
#include "workbench/cli/source_settings.h"
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

/// A source as an argument; a file whose name begins as an option does is named by its folder.
std::string sourceArgument(const std::string& source) {
    return asArgument((source.starts_with('-') ? "./" : "") + source).substr(7);
}

}  // namespace

std::string exploredTable(const std::string& source, const Explored& explored, bool isCut) {
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

std::string exploredNothing(const std::string& source, const Explored& explored,
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

std::string exploredAdvice(const std::string& source, const Explored& explored) {
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

}  // namespace workbench
