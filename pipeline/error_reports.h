#pragma once

#include <string>

#include "platform/Database.h"
#include "platform/PlatformError.h"

namespace intake {

/// The four-line report of a failed service that is appended to a request's error text.
std::string comErrorReport(const PlatformError& error);

/// What a connection reported about its last failure, a line for each of its errors; the failure's
/// own description where it reported none. Appended to a request's error text.
std::string connectionErrorReport(Connection& connection, const PlatformError& failure);

}  // namespace intake
