#pragma once

#include <functional>
#include <memory>
#include <string>

#include "formats/source/EndMark.h"
#include "pipeline/ReaderLogger.h"
#include "pipeline/RequestRecord.h"

namespace intake {

/// Reads sources. A worker owns its reader and calls it on its own thread, one request at a time. A
/// reader never touches the data store.
class ReaderHandler {
public:
    virtual ~ReaderHandler() = default;

    /// Fetches the request's source and appends the result script to `script`. On failure returns
    /// false and appends what went wrong to `error`; `script` then counts for nothing. What it
    /// throws becomes the error text of the request.
    virtual bool Read(const RequestRecord& request, std::string& script, std::string& error) = 0;

    /// Lets go of what was kept for the next request, since none is expected soon.
    virtual void rest() {}
};

/// Makes the reader of a worker, for which it borrows both; they outlive it.
using ReaderMaker = std::function<std::unique_ptr<ReaderHandler>(ReaderLogger&, const EndMark&)>;

}  // namespace intake
