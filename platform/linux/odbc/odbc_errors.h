#pragma once

#include "platform/linux/base/OpenConnection.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// What failures name as their source.
constexpr const char* ODBC_SOURCE = "ODBC";

/// Throws the ConnectionFailure of the last call on the handle; the first of its errors tells what
/// went wrong. `narrow`: the driver has no wide functions, its texts are in UTF-8.
[[noreturn]] void throwOdbcFailure(const OdbcHandle& handle, bool narrow);

}  // namespace intake
