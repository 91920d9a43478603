#pragma once

#include <string>

#include "platform/PlatformError.h"

namespace intake {

/// The four-line report of a failed service that is appended to a request's error text.
std::string comErrorReport(const PlatformError& error);

}  // namespace intake
