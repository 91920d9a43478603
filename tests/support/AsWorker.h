#pragma once

#include "platform/Platform.h"

namespace intake {

/// Sets the calling thread up as a worker, which the system's services expect, while it lives.
class AsWorker {
public:
    AsWorker() { systemPlatform().threads.enterWorker(); }
    ~AsWorker() { systemPlatform().threads.leaveWorker(); }
    AsWorker(const AsWorker&) = delete;
    AsWorker& operator=(const AsWorker&) = delete;
};

}  // namespace intake
