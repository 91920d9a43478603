#pragma once

#include "plugin/HostRecord.h"

namespace intake {

// Both tell the editor, for every parameter that can be hidden, whether it is shown now. Host's
// thread.

void showBindingParameters(const HostRecord& record);
void showReaderParameters(const ReaderParams& params);

}  // namespace intake
