#pragma once

#include <cstdint>
#include <string>

#include "pipeline/RequestRecord.h"

namespace intake {

/// What a load asks of its page; what a test leaves out asks for every row of the first table.
struct HtmlQuery {
    std::string selector = {};
    TargetMode mode = DATA_ARRAY;
    std::string key = {};
    std::string table = "T";
    std::string prefix = {};
    std::string delimiter = "|";
    int32_t fromRow = 0;
    int32_t numRows = 1000000;
    int32_t encoding = 0;
};

/// The script of loading a file that holds `page`, or "failed: " and the error. A script for the
/// data store must be carried out by one without an error.
std::string fileScript(const std::string& page, const HtmlQuery& query);

/// The same without carrying it out, for what the store does not take.
std::string fileScriptAlone(const std::string& page, const HtmlQuery& query);

/// The script of loading from `source`, not carried out.
std::string sourceScript(const std::string& source, const HtmlQuery& query);

/// The fields of an empty data store after a script.
std::string stored(const std::string& script);

}  // namespace intake
