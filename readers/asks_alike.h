#pragma once

#include "pipeline/RequestRecord.h"

namespace intake {

/// Whether two requests ask the same server in the same words and the same way: by the same proxy,
/// as the same user, with the same headers. What they ask for may differ.
bool asksAlike(const RequestRecord& one, const RequestRecord& other);

}  // namespace intake
