#pragma once

#include <memory>
#include <string>

#include "host/cobalt.h"
#include "pipeline/IntakeCallback.h"
#include "pipeline/IntakeThread.h"
#include "plugin/HostRecord.h"
#include "plugin/InstanceGone.h"
#include "plugin/IntakeClientProxy.h"
#include "plugin/SharedMemoryBinding.h"

namespace intake {

/// One plugin instance: starts loads, and carries their answers into the data store. Owned by the
/// host's record through its user data; every operation runs on the host's thread. `params` is set
/// by the frame before it calls in.
class Intake : public lumoDataHandler, public DataVariableQuery, public virtual IntakeCallback {
public:
    Intake();
    ~Intake() override;

    const char* getName() override { return "Intake"; }
    const char* getFolder() override { return "Data"; }
    int32_t getType() override { return 2; }
    const char* getVersion() override;
    int32_t getFlags() override { return 0; }
    const char* getInfo() override;

    void registerParameters() override;

    /// Parses the post-update action; an empty rows delimiter takes the fields delimiter.
    void syncParameters() override;

    /// Starts afresh with a new worker.
    void initialize() override;

    void cleanup() override {}

    /// Reacts to a change of the reader's own parameter of that number.
    void onParameterChanged(int32_t index) override;

    /// Action 0 starts a load, action 2 ends the worker.
    void onExecAction(int32_t action, void* parameters) override;

    void onGuiStatus() override;

    /// Delivers at most one answer and runs the automatic load. The instance may be gone after it:
    /// what an answer sets off can lead the host to delete it.
    void onExecPerField() override;

    /// Executes one answer: console variable, script or fallback or shared memory, post-update
    /// action. Throws InstanceGone when one of them leads the host to delete the instance.
    void executeResult(bool success, const std::string& result, const std::string& error);

    /// Makes a call to the host, which may delete the instance meanwhile. Throws InstanceGone then.
    template <class Call>
    void callHost(Call call) {
        const std::shared_ptr<IntakeClientProxy> proxy = clientProxy_;
        call();
        if (!proxy->isAttached()) {
            throw InstanceGone();
        }
    }

    const char* queryVariable(const char* macro) override { return parseMacro(macro); }
    void onParameterUpdate(const char* text) override;
    void onReserved() override {}

private:
    ReaderParams& parameters() { return *static_cast<ReaderParams*>(params); }

    /// Starts a load: queues the command text of the parameters as they are now.
    void BuildCommand();
    void loadAutomatically();
    void bindSharedMemory();
    void parsePostAction();
    void writeConsoleVariable(bool success, const std::string& result, const std::string& error);
    void writeTarget(bool success, const std::string& result);
    void runPostAction();

    std::shared_ptr<IntakeThread> worker_;
    std::shared_ptr<IntakeClientProxy> clientProxy_;
    double lastLoadTime_ = 0;  // milliseconds; 0 makes the next automatic load due
    std::shared_ptr<SharedMemoryBinding> shmBinding_ = std::make_shared<SharedMemoryBinding>();
    DataExpression& postExpression_;
};

/// Makes a call to the host for a record whose instance, if there is one, it may delete meanwhile.
/// Throws InstanceGone then.
template <class Call>
void callHostFor(Intake* instance, Call call) {
    if (instance != nullptr) {
        instance->callHost(call);
    } else {
        call();
    }
}

}  // namespace intake
