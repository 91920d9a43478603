#include <chrono>

#include "platform/Platform.h"

extern "C" __declspec(dllexport) void startWorker() {
    const auto worker = intake::systemPlatform().threads.start([] {});
    worker->waitFor(std::chrono::seconds(10));
}
