#include "plugin/IntakeClientProxy.h"

#include "plugin/Intake.h"

namespace intake {

void IntakeClientProxy::deliver(bool success, const std::string& answer, const std::string& error) {
    if (instance_ != nullptr) {
        instance_->executeResult(success, answer, error);
    }
}

}  // namespace intake
