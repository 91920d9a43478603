#include "workbench/probe/fetch/fetch_url.h"

#include "workbench/probe/fetch/linux/UrlFetch.h"

namespace probe {

Fetched fetchUrl(const Settings& settings, const Source& source, double timeoutSeconds) {
    return UrlFetch(settings, source, timeoutSeconds).run();
}

}  // namespace probe
