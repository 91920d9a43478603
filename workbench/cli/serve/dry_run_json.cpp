#include "workbench/cli/serve/dry_run_json.h"

#include <algorithm>
#include <array>
#include <optional>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/moments.h"

namespace workbench {

namespace {

constexpr std::size_t mostScript = 65536;
constexpr std::size_t mostSearched = 2 * mostScript;  // for secrets
constexpr std::size_t mostCells = 20'000;
constexpr std::size_t longestCell = 200;  // columns

// In the order of StoreChange::Kind.
constexpr std::array kinds{"new", "changed", "gone", "left"};

/// The start of a text in UTF-8, broken between characters.
std::string startOf(const std::string& text, std::size_t length) {
    if (text.size() <= length) return text;
    while ((static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        --length;
    return text.substr(0, length);
}

/// Secrets are hidden first: the start of one that is cut would not be known for what it is.
std::string startOfScript(const std::string& script, const Redaction& redact) {
    const std::string searched = startOf(toUtf8(script), mostSearched);
    const bool isCut = searched.size() < script.size();
    return startOf(redact(isCut ? searched + "…" : searched), mostScript);
}

void writeTexts(const std::vector<std::string>& texts, JsonWriter& out) {
    out.open('[');
    for (const std::string& text : texts)
        out.text(text);
    out.close(']');
}

std::vector<std::string> redacted(const std::vector<std::string>& cells, const Redaction& redact) {
    std::vector<std::string> shown;
    for (const std::string& cell : cells)
        shown.push_back(redact(fitted(cell, longestCell)));
    return shown;
}

void writeTable(const Table& table, const Redaction& redact, JsonWriter& out) {
    const std::size_t columns = std::max<std::size_t>(table.header.size(), 1);
    const std::size_t rows =
        std::min(table.rows.size(), std::max<std::size_t>(mostCells / columns, 1));
    out.name("table");
    out.open('{');
    out.name("columns");
    writeTexts(redacted(table.header, redact), out);
    out.name("rows");
    out.open('[');
    for (std::size_t i = 0; i < rows; ++i) {
        writeTexts(redacted(table.rows[i], redact), out);
    }
    out.close(']');
    out.member("leftOut", table.rowsLeftOut + table.rows.size() - rows);
    out.close('}');
}

void writeChange(const StoreChange& change, const Redaction& redact, JsonWriter& out) {
    out.open('{');
    out.member("field", redact(change.field));
    out.member("key", redact(change.key));
    out.member("kind", kinds[static_cast<std::size_t>(change.kind)]);
    out.member("before", redact(change.before));
    out.member("after", redact(change.after));
    const bool isLeft = change.kind == StoreChange::Kind::Left;
    out.member("age", isLeft ? std::optional(secondsSince(change.moment)) : std::nullopt);
    out.close('}');
}

}  // namespace

std::string dryRunJson(const DryRunResult& result, const Redaction& redact) {
    JsonWriter out;
    out.open('{');
    out.member("outcome", result.outcome);
    out.member("error", result.error);
    out.member("records", result.records);
    out.member("bytes", result.script.size());
    out.member("duration", result.seconds);
    out.member("script", startOfScript(result.script, redact));
    out.member("isScriptCut", result.script.size() > mostScript);
    writeTable(result.table, redact, out);
    out.name("changes");
    out.open('[');
    for (const StoreChange& change : result.changes.listed)
        writeChange(change, redact, out);
    out.close(']');
    out.member("changesLeftOut", result.changes.leftOut);
    out.member("same", result.changes.same);
    out.member("action", redact(result.action));
    out.member("actionError", redact(result.actionError));
    out.name("commands");
    writeTexts(result.commands, out);
    out.close('}');
    return out.take();
}

}  // namespace workbench
