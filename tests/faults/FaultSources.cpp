#include "tests/faults/FaultSources.h"

#include <sqlite3.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tests/formats/workbook/TestBook.h"

namespace intake {

namespace {

// A source has two rows of its own, then so many plain ones.
std::string numbered(int rows, const std::string& before, const std::string& behind) {
    std::string text;
    for (int row = 0; row < rows; ++row) {
        text.append(before).append(std::to_string(row)).append(behind);
    }
    return text;
}

std::string json(int rows) {
    return R"({"rows":[{"id":"a","v":1.50,"t":"\u00c4\"x","n":{"m":[1,2]}},{"id":"b","v":2})" +
           numbered(rows, R"(,{"id":"row )", R"(","v":"plain"})") + "]}";
}

std::string xml(int rows) {
    return "<?xml version='1.0' encoding='ISO-8859-1'?><r xmlns:n='urn:n'>"
           "<row id='a'><n:v>1 &amp; \xC4</n:v><t><![CDATA[x]]></t><!--c--></row>"
           "<row id='b'><n:v>2</n:v><t>y<b>z</b></t></row>" +
           numbered(rows, "<row id='row ", "'><v>plain</v></row>") + "</r>";
}

std::string payload(int rows) {
    return "<payload><field name='row'><field name='id'><value>a</value></field></field>" +
           numbered(rows, "<field name='row'><field name='id'><value>row ",
                    "</value></field></field>") +
           "</payload>";
}

std::string html(int rows) {
    return "<!doctype html><meta charset=windows-1252><p><table id=t><tr><th>id<th>v</tr>"
           "<tr><td>a<td>\xC4&eacute;<b>x</tr><tr><td>b<td><table><tr><td>2</table></tr>" +
           numbered(rows, "<tr><td>row ", "<td>plain</tr>") + "</table>";
}

std::string database(int rows) {
    return "CREATE TABLE t (id TEXT, v REAL, d DATE, b BOOLEAN);"
           "INSERT INTO t VALUES ('a', 1.5, '2026-01-02', 1), ('b', 2, NULL, 'false')" +
           numbered(rows, ",('row ", "',1,NULL,NULL)") + ";";
}

std::string book(int rows) {
    return TestBook()
        .strings("<si><t>id</t></si><si><t>v &lt; w</t></si><si><r><t>a</t></r></si>")
        .sheet("S",
               "<row r='1'><c r='A1' t='s'><v>0</v></c><c r='B1' t='s'><v>1</v></c></row>"
               "<row r='2'><c r='A2' t='s'><v>2</v></c><c r='B2'><v>1.5</v></c></row>"
               "<row r='3'><c r='A3' t='inlineStr'><is><t>b</t></is></c></row>" +
                   numbered(rows, "<row><c t='str'><v>row ", "</v></c><c><v>1</v></c></row>"))
        .bytes();
}

constexpr auto RESULT = " TABLE |T| TGT_MODE 0 NUM_ROWS 1000 LOG_LEVEL -1 ";

void makeDatabase(const std::string& path, const std::string& statements) {
    sqlite3* database = nullptr;
    if (sqlite3_open(path.c_str(), &database) != SQLITE_OK ||
        sqlite3_exec(database, statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error("the database cannot be made");
    }
    sqlite3_close(database);
}

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator(file), {}};
}

std::string response(const std::string& body) {
    return "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + body;
}

FaultLoad document(const std::string& name, const std::string& mode, const std::string& source,
                   const std::string& path, const std::string& key) {
    return {name, "MODE |" + mode + "| FILENAME |" + source + "| XPATH |" + path + "| KEY |" + key +
                      "|" + RESULT};
}

FaultLoad ofDatabase(const std::string& name, const std::string& file) {
    return {name, "MODE |SQL| CONNSTR |Provider=SQLite;Data Source=" + file +
                      "| QUERY |SELECT * FROM t| KEY |id|" + RESULT};
}

}  // namespace

FaultSources::FaultSources(int rows)
    : server_(
          [this](const std::string& name) { return response(contentOf(path(name.substr(1)))); }) {
    directory_.write("json", json(rows));
    directory_.write("xml", xml(rows));
    directory_.write("payload", payload(rows));
    directory_.write("html", html(rows));
    directory_.write("workbook", book(rows));
    makeDatabase(path("database"), database(rows));
    makeDatabase(path("wide database"), "PRAGMA encoding='UTF-16';" + database(rows));
}

std::vector<FaultLoad> FaultSources::fromFiles() const {
    return {document("json", "JSON", path("json"), "rows", "id"),
            document("xml", "XML", path("xml"), "//row[not(@x)]", "@id"),
            document("html", "HTML", path("html"), "table#t", "id"),
            ofDatabase("database", path("database")),
            ofDatabase("wide database", path("wide database")),
            {"workbook",
             "MODE |SQL| CONNSTR |Provider=Microsoft.ACE.OLEDB.12.0;Extended "
             "Properties=\"Excel 12.0 Xml;HDR=YES\";Data Source=" +
                 path("workbook") + "| QUERY |SELECT * FROM [S$]| KEY |id|" + RESULT}};
}

std::vector<FaultLoad> FaultSources::overHttp() const {
    FaultLoad payload =
        document("payload over HTTP", "XML", server_.url("/payload"), "/payload/row", "id");
    payload.command = "SRC_INFORMAT 1 " + payload.command;
    return {document("json over HTTP", "JSON", server_.url("/json"), "rows", "id"),
            document("xml over HTTP", "XML", server_.url("/xml"), "//row[not(@x)]", "@id"),
            document("html over HTTP", "HTML", server_.url("/html"), "table#t", "id"), payload};
}

FaultLoad FaultSources::byOdbc() const {
    return {"database by ODBC",
            "MODE |SQL| CONNSTR |Driver=libsqlite3odbc.so;Database=" + path("database") +
                "| QUERY |SELECT * FROM t| KEY |id|" + RESULT};
}

}  // namespace intake
