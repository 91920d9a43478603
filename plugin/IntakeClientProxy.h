#pragma once

#include "pipeline/IntakeClient.h"

namespace intake {

class Intake;

/// Hands answers to a plugin instance. Shared between the instance and, while it loads, its worker;
/// the instance detaches it when it goes. Host's thread, but for its release.
class IntakeClientProxy final : public IntakeClient {
public:
    explicit IntakeClientProxy(Intake& instance) : instance_(&instance) {}

    void deliver(bool success, const std::string& answer, const std::string& error) override;

    /// Called by the instance's destructor: what still comes is dropped.
    void detach() { instance_ = nullptr; }

    bool isAttached() const { return instance_ != nullptr; }

private:
    Intake* instance_;
};

}  // namespace intake
