#include "workbench/probe/fetch_url.h"

#include "workbench/probe/linux/UrlFetch.h"

namespace probe {

Fetched fetchUrl(const Settings& settings, const Source& source, double timeoutSeconds) {
    return UrlFetch(settings, source, timeoutSeconds).run();
}

}  // namespace probe
