#include "workbench/probe/fetch/fetch_url.h"

namespace probe {

Fetched fetchUrl(const Settings&, const Source&, double) {
    throw FetchFailure(FetchFailure::Stage::Address,
                       "is an address, which is not looked at on Windows",
                       "Save what is there on this machine, and set \"File Name\" (filename) to "
                       "the file.");
}

}  // namespace probe
