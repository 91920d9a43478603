#pragma once

#include <locale.h>

namespace intake {

/// Lets the calling thread's narrow texts be UTF-8, and its numbers have a decimal point, while it
/// lives. Drivers look at the locale for both, and libcurl for names of hosts. That of the process,
/// which is the host's, is not touched.
class NeutralLocale {
public:
    NeutralLocale() : former_(uselocale(neutral())) {}
    ~NeutralLocale() { uselocale(former_); }
    NeutralLocale(const NeutralLocale&) = delete;
    NeutralLocale& operator=(const NeutralLocale&) = delete;

private:
    /// Never freed: a driver may hold on to it. Null changes nothing.
    static locale_t neutral() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C.UTF-8", nullptr);
        return locale;
    }

    locale_t former_;
};

}  // namespace intake
