#include <chrono>

#include "workbench/probe/fetch/Fetched.h"
#include "workbench/probe/fetch/fetch_file.h"
#include "workbench/probe/fetch/fetch_source.h"
#include "workbench/probe/fetch/fetch_url.h"

namespace probe {

Fetched fetch(const Settings& settings, double timeoutSeconds) {
    const auto start = std::chrono::steady_clock::now();
    const Source source = sourceOf(settings);
    Fetched fetched = source.isUrl ? fetchUrl(settings, source, timeoutSeconds) : fetchFile(source);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    fetched.milliseconds = taken.count();
    return fetched;
}

}  // namespace probe
