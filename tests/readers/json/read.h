#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "pipeline/RequestRecord.h"

namespace intake {

/// What a load asks of its source; what a test leaves out asks for everything.
struct Query {
    std::string path = {};
    TargetMode mode = DATA_TABLE;
    std::string key = {};
    std::string table = "T";
    std::string prefix = {};
    std::string delimiter = "|";
    int32_t fromRow = 0;
    int32_t numRows = 1000000;
};

/// The request that a command with these values asks for.
RequestRecord requestOf(const Query& query);

struct Outcome {
    bool success = false;
    std::string script;
    std::string error;
};

/// Reads a file that is named as the request says and holds `source`.
Outcome read(std::string_view source, const RequestRecord& request);

/// The script of a load that must succeed, else its error. A script for the data store must be
/// carried out by one without an error.
std::string script(std::string_view source, const Query& query);

/// The fields of an empty data store after that script.
std::string stored(std::string_view source, const Query& query);

}  // namespace intake
