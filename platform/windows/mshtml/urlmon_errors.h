#pragma once

#include <string>

#include "platform/windows/com/com.h"

namespace intake {

/// Why urlmon could not open a source. The system has no texts for most of its failures.
std::string urlmonMeaning(HRESULT failure);

}  // namespace intake
