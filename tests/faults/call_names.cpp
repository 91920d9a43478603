#include "tests/faults/call_names.h"

#include <dlfcn.h>
#include <execinfo.h>

#include <cstdio>
#include <cstring>

namespace intake {

namespace {

constexpr int MOST_FRAMES = 40;

const char* nameOf(void* address) {
    Dl_info info{};
    return dladdr(address, &info) == 0 ? nullptr : info.dli_sname;
}

}  // namespace

CallNames callNames() {
    CallNames names{};
    std::array<void*, MOST_FRAMES> frames{};
    const int count = backtrace(frames.data(), MOST_FRAMES);
    for (int i = 0; i < count; ++i) {
        if (const char* const name = nameOf(frames[static_cast<size_t>(i)])) {
            const size_t length = std::strlen(names.data());
            std::snprintf(names.data() + length, names.size() - length, "%s%s",
                          length == 0 ? "" : " < ", name);
        }
    }
    return names;
}

}  // namespace intake
