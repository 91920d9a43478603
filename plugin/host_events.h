#pragma once

#include "plugin/HostRecord.h"

namespace intake {

// What the host tells an instance by number. Host's thread.

/// A message of the host: a four-character code and its data.
void dispatch(HostRecord& record, int32_t code, void* data, void** out);

/// A parameter has changed; `hostIndex` counts the record's fields from 1.
void parameterChanged(HostRecord& record, int32_t hostIndex);

}  // namespace intake
