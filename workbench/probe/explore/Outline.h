#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/probe/Settings.h"

namespace probe {

/// What an entry of an outline is: a value or a container of JSON or XML, or what its name says.
enum class EntryType { Value, Heading, Table, View, Sheet, Column };

/// Settings, and how many records they load.
struct Choice {
    Proposal settings;
    std::size_t records = 0;
};

/// How large a table is, with a row of names.
struct TableSize {
    std::size_t rows = 0;
    std::size_t columns = 0;
};

/// Something in a source that can be selected, or that others stand in.
struct OutlineEntry {
    std::size_t depth = 0;  // 0 for what stands directly at the place that was asked for
    std::string name;
    std::string kind;                    // "objects", "texts", "table"
    std::optional<std::size_t> records;  // that are loaded by its settings; nothing: not counted
    std::string value;                   // of the first one, in one line; empty where there is none
    std::string place;                   // to look below it; empty when nothing is there
    Proposal settings;                   // that select it; empty when nothing does
    EntryType type = EntryType::Value;
    std::string key{};      // of a column: what the parameter "key" calls it; empty when it cannot
    bool isHidden = false;  // of a sheet
    std::optional<TableSize> size{};       // of a table of a page, or a sheet
    std::optional<Choice> where{};         // of a value of one record: all records that have it
    std::vector<std::string> selectors{};  // of a table of a page: all that find just it
};

/// The first records of what was asked for, as they stand in the source.
struct Preview {
    std::vector<std::string> columns;  // those of the outline's page
    std::vector<std::vector<std::string>> rows;
    std::optional<std::size_t> leftOut;  // further rows; nothing: not counted
    std::vector<std::string> places{};   // of the rows, to look at one of them; may be empty
};

/// What can be selected in a source, or below one place of it: a page of it.
struct Outline {
    std::vector<OutlineEntry> entries;
    std::size_t leftOut = 0;           // behind the page; at least so many where `total` is unknown
    std::optional<std::size_t> total;  // before, on and behind the page
    std::size_t notKept = 0;           // names and what is below them that were not even looked at
    std::optional<Preview> preview{};  // where a whole outline of one table is wished for
};

/// What is wanted of an outline.
struct OutlineWish {
    std::string place;        // empty for the whole source
    std::string find;         // only what has this text in its name or in a value; empty for all
    std::size_t most = 40;    // so many entries
    std::size_t from = 0;     // so many are passed over
    bool isWhole = false;     // with headings, and with a preview
    bool countsRows = false;  // of tables of a database
};

}  // namespace probe
