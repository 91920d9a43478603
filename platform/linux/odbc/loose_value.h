#pragma once

#include "platform/linux/odbc/odbc_types.h"

namespace intake {

/// Reads the text of a value, which `value.text` holds, as a value of its column's type. What is no
/// such value stays what it is: another number, or the text.
void readLooseValue(const OdbcType& type, FieldValue& value);

}  // namespace intake
