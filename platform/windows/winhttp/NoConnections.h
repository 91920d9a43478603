#pragma once

#include "platform/KeptConnections.h"

namespace intake {

/// Keeps none: every handle of WinHTTP is closed with its fetch, and what the system's other
/// services keep is their own business.
class NoConnections final : public KeptConnections {
public:
    void close() override {}
};

}  // namespace intake
