#include "plugin/excel_query.h"

#include <string>

#include "host/lumo.h"
#include "plugin/host_text.h"

namespace intake {

namespace {

std::string connectionString(const ReaderParams& params) {
    return std::string("Provider=Microsoft.ACE.OLEDB.12.0;Data Source=")
        .append(hostText(params.filename))
        .append(";Extended Properties=\"Excel 12.0 Xml;HDR=YES\";");
}

std::string selectStatement(const ReaderParams& params) {
    const std::string_view fields = hostText(params.range);
    return std::string("SELECT ")
        .append(fields.empty() ? "*" : fields)
        .append(" FROM [")
        .append(hostText(params.sheet))
        .append("$];");
}

}  // namespace

void prepareExcelQuery(ReaderParams& params) {
    std::string connection = connectionString(params);
    std::string query = selectStatement(params);
    const bool connectionFits = connection.size() < LONG_TEXT;
    if (!connectionFits || query.size() >= LONG_TEXT) {
        _lumoprintf("Intake: the %s for the workbook \"%s\" is longer than %d bytes\n",
                    connectionFits ? "SQL query" : "connection string",
                    std::string(hostText(params.filename)).c_str(),
                    static_cast<int>(LONG_TEXT) - 1);
        connection.clear();
        query.clear();
    }
    copyToHost(params.connStr, LONG_TEXT, connection);
    copyToHost(params.query, LONG_TEXT, query);
}

}  // namespace intake
