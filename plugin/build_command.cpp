#include "plugin/build_command.h"

#include <array>
#include <string_view>
#include <variant>

#include "host/lumo.h"
#include "pipeline/command_text.h"
#include "plugin/excel_query.h"
#include "plugin/host_text.h"

namespace intake {

namespace {

using P = ReaderParams;

struct Escaped {
    char* P::*text;
};
struct AsItStands {
    char* P::*text;
};

struct CommandPair {
    const char* key;
    std::variant<int32_t P::*, Escaped, AsItStands> value;
    bool onlyWithProxy = false;
};

/// The pairs between MODE and ENCODING. The connection string stands twice; that belongs to the
/// format.
constexpr std::array<CommandPair, 30> PAIRS{{
    {"FILENAME", Escaped{&P::filename}},
    {"SHEET", AsItStands{&P::sheet}},
    {"CONNSTR", Escaped{&P::connStr}},
    {"AVOID_CACHE", &P::avoidCache},
    {"USE_AUTH", &P::useAuth},
    {"USERNAME", Escaped{&P::userName}},
    {"PASSWORD", Escaped{&P::password}},
    {"CONNSTR", Escaped{&P::connStr}},
    {"QUERY", Escaped{&P::query}},
    {"XPATH", Escaped{&P::xpath}},
    {"NAMESPACES", Escaped{&P::namespaces}},
    {"KEY", Escaped{&P::key}},
    {"RANGE", AsItStands{&P::range}},
    {"FROM_ROW", AsItStands{&P::fromRow}},
    {"NUM_ROWS", AsItStands{&P::numRows}},
    {"TABLE", Escaped{&P::table}},
    {"LOG_LEVEL", &P::logLevel},
    {"FIELDS_DELIMITER", Escaped{&P::delimiter}},
    {"ROWS_DELIMITER", Escaped{&P::rowsDelimiter}},
    {"VARSPREFIX", AsItStands{&P::varsPrefix}},
    {"TGT_MODE", &P::mode},
    {"SRC_INFORMAT", &P::inputFormat},
    {"TGT_OUTFORMAT", &P::outputFormat},
    {"ENABLE_PROXY", &P::enableProxy},
    {"PROXY_MODE", &P::proxyMode, true},
    {"PROXY_URL", AsItStands{&P::proxyUrl}, true},
    {"PROXY_USER", Escaped{&P::proxyUser}, true},
    {"PROXY_PWD", Escaped{&P::proxyPwd}, true},
    {"USE_CUSTOM_HEADERS", &P::useCustomHeaders},
    {"CUSTOM_HEADERS", AsItStands{&P::customHeaders}},
}};

struct PairWriter {
    const P& params;
    const char* key;
    std::string& command;

    void operator()(int32_t P::*number) const { appendNumberPair(command, key, params.*number); }
    void operator()(Escaped value) const {
        appendTextPair(command, key, EscapeValue(hostText(params.*value.text)));
    }
    void operator()(AsItStands value) const {
        appendTextPair(command, key, hostText(params.*value.text));
    }
};

std::string_view modeName(int32_t queryMode) {
    switch (queryMode) {
        case QUERY_EXCEL:
        case QUERY_SQL:
            return "SQL";
        case QUERY_XML:
            return "XML";
        case QUERY_JSON:
            return "JSON";
        case QUERY_HTML:
            return "HTML";
        default:
            return "";
    }
}

/// The encoding code that goes with the host's font encoding.
int32_t encodingCode() {
    switch (_api__global_get_font_encoding()) {
        case 0:
            return 2;
        case 4:
            return 1;
        default:
            return 0;
    }
}

}  // namespace

std::string buildCommandText(ReaderParams& params) {
    if (params.queryMode == QUERY_EXCEL) {
        prepareExcelQuery(params);
    }
    std::string command;
    appendTextPair(command, "MODE", modeName(params.queryMode));
    for (const CommandPair& pair : PAIRS) {
        if (!pair.onlyWithProxy || params.enableProxy != 0) {
            std::visit(PairWriter{params, pair.key, command}, pair.value);
        }
    }
    appendNumberPair(command, "ENCODING", encodingCode());
    return command;
}

}  // namespace intake
