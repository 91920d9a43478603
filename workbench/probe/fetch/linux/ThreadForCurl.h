#pragma once

#include <locale.h>
#include <signal.h>

namespace probe {

/// While it lives, the calling thread is as libcurl needs it: texts are UTF-8, for names of hosts,
/// and a connection that breaks while something is sent over it does not end the process. What else
/// runs in the process is not touched.
class ThreadForCurl {
public:
    ThreadForCurl() : formerLocale_(uselocale(utf8())) {
        pthread_sigmask(SIG_BLOCK, &brokenPipe(), &formerSignals_);
    }
    ~ThreadForCurl() {
        const timespec noWait{};
        if (sigismember(&formerSignals_, SIGPIPE) == 0)
            sigtimedwait(&brokenPipe(), nullptr, &noWait);
        pthread_sigmask(SIG_SETMASK, &formerSignals_, nullptr);
        uselocale(formerLocale_);
    }
    ThreadForCurl(const ThreadForCurl&) = delete;
    ThreadForCurl& operator=(const ThreadForCurl&) = delete;

private:
    /// Null changes nothing.
    static locale_t utf8() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C.UTF-8", nullptr);
        return locale;
    }

    static const sigset_t& brokenPipe() {
        static const sigset_t signals = [] {
            sigset_t set;
            sigemptyset(&set);
            sigaddset(&set, SIGPIPE);
            return set;
        }();
        return signals;
    }

    locale_t formerLocale_;
    sigset_t formerSignals_{};
};

}  // namespace probe
