#pragma once

#include <cstdint>
#include <string>

#include "pipeline/RequestRecord.h"

namespace intake {

/// What a load asks of its source; what a test leaves out asks for everything, as text.
struct XmlQuery {
    std::string xpath = {};
    TargetMode mode = DATA_ARRAY;
    std::string key = {};
    std::string table = "T";
    std::string namespaces = {};
    std::string prefix = {};
    std::string delimiter = "|";
    int32_t fromRow = 0;
    int32_t numRows = 1000000;
    int32_t encoding = 0;
    bool markup = false;
    bool payload = false;
};

/// The script of loading a file that holds `source`, or "failed: " and the error. A script for the
/// data store must be carried out by one without an error.
std::string fileScript(const std::string& source, const XmlQuery& query);

/// The same without carrying it out, for what the store does not take.
std::string fileScriptAlone(const std::string& source, const XmlQuery& query);

/// As fileScript, of a URL that answers with `body`.
std::string urlScript(const std::string& body, const XmlQuery& query);

/// The same of a file that is there.
std::string scriptOf(const std::string& path, const XmlQuery& query);

/// The fields of an empty data store after a script.
std::string stored(const std::string& script);

}  // namespace intake
