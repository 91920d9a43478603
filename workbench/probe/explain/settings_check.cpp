#include "workbench/probe/explain/settings_check.h"

#include "workbench/probe/explain/RowRange.h"
#include "workbench/probe/fetch/source_start.h"
#include "workbench/probe/kinds.h"

namespace probe {

bool needsKey(const Settings& settings) {
    const bool isJsonOrXml =
        settings.queryMode == QueryType::Json || settings.queryMode == QueryType::Xml;
    // A document that is written as a whole has no records.
    const bool isWhole = settings.queryMode == QueryType::Json && settings.xpath.empty();
    switch (settings.mode) {
        case TargetMode::DataTable:
            return !isWhole;
        case TargetMode::DataStructure:
            return settings.queryMode == QueryType::Html ||
                   (settings.queryMode != QueryType::Json && settings.table.empty());
        case TargetMode::FieldArray:
            return !isJsonOrXml;
        case TargetMode::SharedMemory:
            return settings.queryMode == QueryType::Html;
        default:
            return false;
    }
}

namespace {

void checkSource(const Settings& settings, Ladder& ladder) {
    const bool isDatabase = settings.queryMode == QueryType::Sql;
    if (isDatabase && settings.connStr.empty()) {
        ladder.fail(Stage::Settings, "",
                    "The query type is SQL, and \"Connection String\" (connStr) is empty.",
                    "Set it to the database, or \"Query type: \" (queryMode) to what the source "
                    "is.");
    } else if (!isDatabase && settings.filename.empty()) {
        ladder.fail(Stage::Settings, "",
                    "\"File Name\" (filename) is empty: nothing says where the source is.",
                    "Set it to a file or to an address.");
    } else if (settings.queryMode == QueryType::Excel && isUrl(settings.filename)) {
        ladder.fail(Stage::Settings, "",
                    "The query type is EXCEL, the first in the list, which reads files only, and "
                    "\"File Name\" (filename) is an address.",
                    "Set \"Query type: \" (queryMode) to what the source is.");
    }
}

}  // namespace

void checkSettings(const Settings& settings, Ladder& ladder) {
    checkSource(settings, ladder);
    checkRowTexts(settings, ladder);
    if (settings.key.empty() && needsKey(settings)) {
        ladder.fail(Stage::Settings, "",
                    "\"Key\" (key) is empty, and this form of field needs one.",
                    "Set it to what names a record, or \"Field is a: \" (mode) to DataArray.");
    }
    const bool isNamedByKey = settings.mode == TargetMode::DataStructure;
    const bool hasTarget = settings.mode == TargetMode::SharedMemory || isNamedByKey;
    const bool hasNeither = settings.table.empty() && settings.key.empty();
    if (isNamedByKey && hasNeither && settings.queryMode == QueryType::Json)
        ladder.fail(
            Stage::Settings, "",
            "\"Key\" (key) and \"CB Field Name\" (table) are both empty: nothing says where "
            "the records go.",
            "Set \"Key\" (key) to what names a record, or \"CB Field Name\" (table) to the "
            "name of a field of the data store.");
    if (settings.table.empty() && !hasTarget)
        ladder.fail(Stage::Settings, "",
                    "\"CB Field Name\" (table) is empty: nothing says where the records go.",
                    "Set it to the name of a field of the data store.");
    ladder.ok(Stage::Settings, "");
}

}  // namespace probe
