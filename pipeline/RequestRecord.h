#pragma once

#include <cstdint>
#include <string>

namespace intake {

/// How the selected records are laid out in the data store.
enum TargetMode : int32_t {
    DATA_TABLE = 0,
    DATA_ARRAY = 1,
    DATA_STRUCTURE = 2,
    DATA_FIELD_ARRAY = 3,
    SHARED_MEMORY = 4,
};

/// One load request, parsed from its command text. The worker makes a fresh one for every command;
/// each member is named after its command key.
struct RequestRecord {
    std::string mode = "EXCEL";
    std::string filename;
    std::string range;
    std::string connStr;
    bool avoidCache = false;
    bool useAuth = false;
    std::string userName;
    std::string password;
    std::string query;
    std::string xpath;
    std::string namespaces;
    int32_t fromRow = 0;
    int32_t numRows = 0;
    std::string key;
    std::string sheet;
    std::string table;
    int32_t targetMode = DATA_TABLE;
    std::string fieldsDelimiter;
    std::string rowsDelimiter;
    int32_t logLevel = 0;
    int32_t encoding = 0;
    std::string varsPrefix;
    int32_t targetOutFormat = 0;
    int32_t sourceInFormat = 0;
    bool enableProxy = false;
    int32_t proxyMode = 0;
    std::string proxyUrl;
    std::string proxyUser;
    std::string proxyPwd;
    int32_t useCustomHeaders = 0;
    std::string customHeaders;
};

}  // namespace intake
