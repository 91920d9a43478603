#include "plugin/visibility.h"

#include <array>

#include "host/lumo.h"
#include "pipeline/RequestRecord.h"

namespace intake {

namespace {

using P = ReaderParams;

template <class Values>
struct VisibilityRule {
    const char* parameter;
    bool (*shown)(const Values&);
};

constexpr int32_t MANUAL_PROXY = 2;

bool isExcel(const P& p) {
    return p.queryMode == QUERY_EXCEL;
}
bool isSql(const P& p) {
    return p.queryMode == QUERY_SQL;
}
bool isXml(const P& p) {
    return p.queryMode == QUERY_XML;
}
bool isJson(const P& p) {
    return p.queryMode == QUERY_JSON;
}
bool isExcelOrHtml(const P& p) {
    return isExcel(p) || p.queryMode == QUERY_HTML;
}
bool isXmlOrJson(const P& p) {
    return isXml(p) || isJson(p);
}
bool hasFile(const P& p) {
    return isExcelOrHtml(p) || isXmlOrJson(p);
}
bool hasCredentials(const P& p) {
    return isXml(p) && p.useAuth != 0;
}
bool isSharedMemory(const P& p) {
    return p.mode == SHARED_MEMORY;
}
bool hasTable(const P& p) {
    return !isSharedMemory(p);
}
bool hasKey(const P& p) {
    return !isXml(p) || (p.mode != DATA_FIELD_ARRAY && p.mode != SHARED_MEMORY);
}
bool loadsAutomatically(const P& p) {
    return p.autoLoad != 0;
}
bool hasProxy(const P& p) {
    return isJson(p) && p.enableProxy != 0;
}
bool hasManualProxy(const P& p) {
    return hasProxy(p) && p.proxyMode == MANUAL_PROXY;
}
bool hasCustomHeaders(const P& p) {
    return isXmlOrJson(p) && p.useCustomHeaders != 0;
}

constexpr std::array<VisibilityRule<P>, 27> READER_RULES{{
    {"filename", hasFile},
    {"sheet", isExcelOrHtml},
    {"range", isExcel},
    {"connStr", isSql},
    {"useAuth", isXml},
    {"userName", hasCredentials},
    {"password", hasCredentials},
    {"avoidCache", isXml},
    {"query", isSql},
    {"xpath", isXmlOrJson},
    {"namespaces", isXml},
    {"inputFormat", isXml},
    {"outputFormat", isXml},
    {"key", hasKey},
    {"table", hasTable},
    {"shmvar", isSharedMemory},
    {"shmtype", isSharedMemory},
    {"delimiter", isSharedMemory},
    {"rowsDelimiter", isSharedMemory},
    {"autoLoadInterval", loadsAutomatically},
    {"enableProxy", isJson},
    {"proxyMode", hasProxy},
    {"proxyUrl", hasManualProxy},
    {"proxyUser", hasManualProxy},
    {"proxyPwd", hasManualProxy},
    {"useCustomHeaders", isXmlOrJson},
    {"customHeaders", hasCustomHeaders},
}};

constexpr std::array<VisibilityRule<HostRecord>, 3> BINDING_RULES{{
    {"RemoteContainer",
     [](const HostRecord& r) { return r.IsOther != 0 && r.WhichOther == OTHER_IS_REMOTE; }},
    {"WhichOther", [](const HostRecord& r) { return r.IsOther != 0; }},
    {"ConvTableName", [](const HostRecord& r) { return r.UseConvTable != 0; }},
}};

template <class Rules, class Values>
void applyRules(const Rules& rules, const Values& values) {
    for (const auto& rule : rules) {
        evSendGuiParameterShow(rule.parameter, rule.shown(values) ? 1 : 0);
    }
}

}  // namespace

void showBindingParameters(HostRecord record) {
    applyRules(BINDING_RULES, record);
}

void showReaderParameters(ReaderParams params) {
    applyRules(READER_RULES, params);
}

}  // namespace intake
