#pragma once

#include <string>

namespace intake {

/// Receives the answers of a worker, on the host's thread. Owned by the instance that asked; the
/// queues hold weak references, so answers for an instance that has gone are dropped.
class IntakeClient {
public:
    virtual ~IntakeClient() = default;

    /// One answer: the result script when `success` is set, else the reason in `error`. The texts
    /// belong to the queue and hold for this call.
    virtual void deliver(bool success, const std::string& answer, const std::string& error) = 0;
};

}  // namespace intake
