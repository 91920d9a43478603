#include "platform/Platform.h"

extern "C" __attribute__((visibility("default"))) void enterAndLeaveWorker() {
    intake::Threads& threads = intake::systemPlatform().threads;
    threads.enterWorker();
    threads.leaveWorker();
}
