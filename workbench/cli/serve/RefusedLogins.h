#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "workbench/cli/child_process.h"
#include "workbench/probe/Settings.h"

namespace workbench {

/// Remembers logins that were refused, for half a minute, so that looks at a source do not send
/// them again at once: accounts lock after a few times. Any thread.
class RefusedLogins {
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// The clock is for tests.
    explicit RefusedLogins(std::function<Moment()> clock = std::chrono::steady_clock::now)
        : clock_(std::move(clock)) {}

    /// Takes note where the answer of a look says that the login was refused.
    void note(const std::string& login, const ChildAnswer& answer);

    bool isRefused(const std::string& login);

private:
    const std::function<Moment()> clock_;
    std::mutex mutex_;
    std::map<std::string, Moment> refused_;  // when
};

/// Who asks, and where: the same for settings that send the same.
std::string loginOf(const probe::Settings& settings);

}  // namespace workbench
