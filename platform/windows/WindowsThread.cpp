#include "platform/windows/WindowsThread.h"

#include "platform/windows/ProcessLocks.h"
#include "platform/windows/base/system_message.h"

namespace intake {

namespace {

/// Returns once the thread stands still, which it does outside the system's own critical sections
/// only. Asking for its registers is what waits for that.
void stop(HANDLE thread) {
    CONTEXT context{};
    context.ContextFlags = CONTEXT_CONTROL;
    SuspendThread(thread);
    GetThreadContext(thread, &context);
}

}  // namespace

WindowsThread::WindowsThread(std::function<void()> body) : shared_(std::make_shared<Shared>()) {
    shared_->body = std::move(body);
    auto argument = std::make_unique<std::shared_ptr<Shared>>(shared_);
    handle_ = CreateThread(nullptr, 0, &run, argument.get(), 0, &identifier_);
    if (handle_ == nullptr) {
        throwLastError("CreateThread");
    }
    argument.release();  // the thread's now
}

WindowsThread::~WindowsThread() {
    CloseHandle(handle_);
}

DWORD WINAPI WindowsThread::run(void* argument) {
    const std::unique_ptr<std::shared_ptr<Shared>> owned(
        static_cast<std::shared_ptr<Shared>*>(argument));
    Shared& shared = **owned;
    if (shared.move(Phase::STARTING, Phase::RUNNING)) {
        shared.body();
        if (!shared.move(Phase::RUNNING, Phase::LEAVING)) {
            Sleep(INFINITE);  // the end by force is on its way
        }
    }
    shared.body = nullptr;
    return 0;
}

bool WindowsThread::waitFor(std::chrono::milliseconds limit) {
    return WaitForSingleObject(handle_, static_cast<DWORD>(limit.count())) == WAIT_OBJECT_0;
}

void WindowsThread::terminate() {
    if (shared_->move(Phase::STARTING, Phase::CANCELLED) ||
        !shared_->move(Phase::RUNNING, Phase::TERMINATED)) {
        return;
    }
    {
        const ProcessLocks held;
        stop(handle_);
        TerminateThread(handle_, 0);
        WaitForSingleObject(handle_, INFINITE);  // it runs on for a moment
    }
    shared_->body = nullptr;
}

}  // namespace intake
