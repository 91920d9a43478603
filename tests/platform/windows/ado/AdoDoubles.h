#pragma once

#include <string>
#include <vector>

#include "platform/windows/com/ComFactory.h"
#include "tests/platform/windows/ComCalls.h"

namespace intake {

/// An ADO that a test sets up, of objects that count their references and note their calls.
/// Outlives them.
class AdoDoubles {
public:
    struct Error {
        long number;
        std::wstring description;
    };

    /// What stands in for CoCreateInstance.
    ComFactory factory();

    ComCalls calls;
    HRESULT opening = S_OK;   // what opening a connection returns
    HRESULT querying = S_OK;  // what opening a recordset returns
    HRESULT listingErrors = S_OK;
    std::vector<Error> errors;
    std::vector<std::wstring> names;                // of the fields
    std::vector<std::vector<VARIANT>> records;      // lent by the test, which frees what they hold
    size_t missingField = static_cast<size_t>(-1);  // not to be had from the collection
    bool hasFields = true;                          // or no collection at all

    size_t record = 0;  // the current one
};

}  // namespace intake
