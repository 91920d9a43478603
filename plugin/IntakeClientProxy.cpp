#include "plugin/IntakeClientProxy.h"

#include "plugin/Intake.h"

namespace intake {

void IntakeClientProxy::deliver(bool success, const std::string& answer, const std::string& error) {
    if (instance_ == nullptr) {
        return;
    }
    try {
        instance_->executeResult(success, answer, error);
    } catch (const InstanceGone&) {
        return;  // it ended the delivery, and all is done
    }
}

}  // namespace intake
