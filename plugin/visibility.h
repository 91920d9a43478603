#pragma once

#include "plugin/HostRecord.h"

namespace intake {

// Both tell the editor, for every parameter that can be hidden, whether it is shown now. They take
// copies: the editor may lead the host to give the record up. Host's thread.

void showBindingParameters(HostRecord record);
void showReaderParameters(ReaderParams params);

}  // namespace intake
