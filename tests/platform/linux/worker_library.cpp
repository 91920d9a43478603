#include <chrono>

#include "platform/Platform.h"

extern "C" __attribute__((visibility("default"))) void startWorker() {
    const auto worker = intake::systemPlatform().threads.start([] {});
    worker->waitFor(std::chrono::seconds(10));
}
