#include "tests/fakes/host/FakeHost.h"

#include <utility>

namespace {

FakeHost* current = nullptr;

std::string functionOf(const std::string& name) {
    const size_t dot = name.rfind('.');
    return dot == std::string::npos ? name : name.substr(dot + 1);
}

}  // namespace

FakeHost& fakeHost() {
    return *current;
}

FakeHost::FakeHost() : previous_(std::exchange(current, this)) {}

FakeHost::~FakeHost() {
    current = previous_;
}

void FakeHost::onCall(const std::string& function, Action action) {
    actions_[function] = std::move(action);
}

void FakeHost::onNextCall(const std::string& function, Action action) {
    onCall(function, [this, function, next = std::move(action)] {
        const Action once = next;  // erasing the entry ends this closure
        actions_.erase(function);
        once();
    });
}

std::vector<std::string> FakeHost::takeCalls() {
    return std::exchange(calls, {});
}

void FakeHost::run(const std::string& name) {
    const auto found = actions_.find(functionOf(name));
    if (found != actions_.end()) {
        const Action action = found->second;
        action();
    }
    if (onEveryCall) {
        onEveryCall();
    }
}
