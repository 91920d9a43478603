#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace probe {

/// The query type of an instance, in the order of the parameter's values.
enum class QueryType { Excel, Sql, Xml, Json, Html };

/// What the field of an instance is, in the order of the parameter's values.
enum class TargetMode { DataTable, DataArray, DataStructure, FieldArray, SharedMemory };

/// How a proxy is found, in the order of the parameter's values.
enum class ProxyMode { AutoDetect, System, Manual };

/// Values for parameters, by their names, in the order in which they are to be set.
using Proposal = std::vector<std::pair<std::string, std::string>>;

/// What an instance is set to, each member by the name of its parameter; those that have nothing to
/// do with the source are left out. Plain values; any thread.
struct Settings {
    QueryType queryMode = QueryType::Excel;
    std::string filename;
    std::string sheet;
    std::string connStr;
    std::string query;
    std::string range;
    std::string xpath;
    std::string namespaces;
    std::string key;
    std::string fromRow;
    std::string numRows;
    std::string table;
    TargetMode mode = TargetMode::DataTable;
    int32_t inputFormat = 0;   // 0 XML, 1 Payload
    int32_t outputFormat = 0;  // 0 Text, 1 XML

    bool useAuth = false;
    std::string userName;
    std::string password;
    bool avoidCache = false;
    bool enableProxy = false;
    ProxyMode proxyMode = ProxyMode::AutoDetect;
    std::string proxyUrl;
    std::string proxyUser;
    std::string proxyPwd;
    bool useCustomHeaders = false;
    std::string customHeaders;  // lines such as "X-Key: 1"

    Proposal typed;  // what arrives otherwise than it was typed and may hold secrets, as typed
};

/// A parameter and where its value stands.
struct TextParameter {
    const char* name;
    std::string Settings::*member;
};
struct SwitchParameter {
    const char* name;
    bool Settings::*member;
};

std::span<const TextParameter> textParameters();
std::span<const SwitchParameter> switchParameters();

/// Sets what a proposal says; false when that has a value for something else than a text, the query
/// type or a DataArray.
bool set(const Proposal& proposal, Settings& settings);

}  // namespace probe
