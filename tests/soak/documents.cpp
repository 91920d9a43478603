#include "tests/soak/documents.h"

#include <cstdio>
#include <cstdlib>

#include "tests/formats/workbook/TestBook.h"

namespace intake {

namespace {

/// Few numbers, the largest among the first: the data store never forgets a row.
int rowsOf(int version) {
    return 1 + 40 * (version % 5);
}

/// Of the same length always, so that no version needs more memory than another one of its rows.
std::string valueOf(int source, int version, int row) {
    char text[64];
    std::snprintf(text, sizeof text, "s%04dv%07dr%03dof%03d", source, version, row,
                  rowsOf(version));
    return text;
}

/// All values of a version, each between two texts.
std::string listOf(int source, int version, const char* before, const char* after) {
    std::string list;
    for (int row = 0; row < rowsOf(version); ++row) {
        list.append(before).append(valueOf(source, version, row)).append(after);
    }
    return list;
}

std::string jsonOf(int source, int version) {
    std::string list = listOf(source, version, R"({"v": ")", "\"},\n");
    list.resize(list.size() - 2);
    return R"({"r": [)" + list + "]}";
}

std::string pageOf(int source, int version) {
    return "<!DOCTYPE html><html><body><h1>News</h1><table id=\"t\"><tr><th>v</th></tr>" +
           listOf(source, version, "<tr><td>", "</td></tr>\n") + "</table></body></html>";
}

std::string workbookOf(int source, int version) {
    const char* const before = "<row><c t=\"inlineStr\"><is><t>";
    const char* const after = "</t></is></c></row>";
    return TestBook()
        .sheet("S", std::string(before) + "v" + after + listOf(source, version, before, after))
        .bytes();
}

std::string databaseOf(int source, int version) {
    return "BEGIN IMMEDIATE; CREATE TABLE IF NOT EXISTS t (v TEXT); DELETE FROM t;" +
           listOf(source, version, "INSERT INTO t VALUES ('", "');") + "COMMIT;";
}

}  // namespace

std::string documentOf(Kind kind, int source, int version) {
    switch (kind) {
        case Kind::JSON:
            return jsonOf(source, version);
        case Kind::XML:
            return "<d>" + listOf(source, version, "<r v=\"", "\"/>\n") + "</d>";
        case Kind::HTML:
            return pageOf(source, version);
        case Kind::SQL:
            return databaseOf(source, version);
        case Kind::WORKSHEET:
            return workbookOf(source, version);
    }
    return "";
}

std::string scriptOf(Kind kind, const std::string& table, int source, int version) {
    const bool isQuery = kind == Kind::SQL || kind == Kind::WORKSHEET;
    const int rows = rowsOf(version);
    std::string values = listOf(source, version, "\"\"", "\"\",");
    values.pop_back();
    return table + "[0-" + std::to_string(rows - 1) + "]=" + values + (isQuery ? ";" : "; ") +
           "READER_NUM_RECORDS=" + std::to_string(rows) + ";";
}

std::optional<int> versionOf(const std::string& script, Kind kind, const std::string& table,
                             int source) {
    const size_t mark = script.find('v');
    if (mark == std::string::npos) {
        return std::nullopt;
    }
    const int version = std::atoi(script.c_str() + mark + 1);
    const bool isWhole = version >= 0 && script == scriptOf(kind, table, source, version);
    return isWhole ? std::optional(version) : std::nullopt;
}

}  // namespace intake
