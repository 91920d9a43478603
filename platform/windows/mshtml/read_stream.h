#pragma once

#include <string>

#include "platform/windows/com/ComPointer.h"

namespace intake {

/// All that a stream holds. Throws PlatformError, also where that is more than a page may have.
std::string readStream(const ComPointer<IStream>& stream);

}  // namespace intake
