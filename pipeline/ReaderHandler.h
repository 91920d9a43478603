#pragma once

#include <string>

#include "pipeline/RequestRecord.h"

namespace intake {

/// Reads one kind of source. A worker owns one reader of each kind and calls it on its own thread,
/// one request at a time. A reader never touches the data store.
class ReaderHandler {
public:
    virtual ~ReaderHandler() = default;

    /// Fetches the request's source and appends the result script to `script`. On failure returns
    /// false and appends what went wrong to `error`; `script` then counts for nothing. What it
    /// throws becomes the error text of the request.
    virtual bool Read(const RequestRecord& request, std::string& script, std::string& error) = 0;
};

}  // namespace intake
