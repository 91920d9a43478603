#pragma once

#include <locale.h>

namespace intake {

/// Lets the calling thread's narrow texts be UTF-8 while it lives. The host's own locale, that of
/// the process, is not touched.
class Utf8Locale {
public:
    Utf8Locale()
        : utf8_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)),
          former_(utf8_ != nullptr ? uselocale(utf8_) : nullptr) {}
    ~Utf8Locale() {
        if (utf8_ != nullptr) {
            uselocale(former_);
            freelocale(utf8_);
        }
    }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

private:
    locale_t utf8_;
    locale_t former_;
};

}  // namespace intake
