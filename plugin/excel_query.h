#pragma once

#include "plugin/HostRecord.h"

namespace intake {

/// Derives the connection string and the SQL query for a worksheet from the instance's file name,
/// sheet and fields, and stores both in its parameters. When either passes 511 bytes, both are left
/// empty and one line on the host's console says which. Host's thread.
void prepareExcelQuery(ReaderParams& params);

}  // namespace intake
