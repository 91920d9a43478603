#pragma once

#include <string>

#include "platform/Database.h"
#include "platform/windows/com/com.h"

namespace intake {

/// Reads what a variant holds, whose type it keeps. A text stands in `text`, in UTF-8, and is lent
/// by it. Throws PlatformError.
void readVariant(const VARIANT& variant, std::string& text, FieldValue& value);

}  // namespace intake
