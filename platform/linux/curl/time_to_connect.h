#pragma once

#include <curl/curl.h>

namespace intake {

/// In microseconds, of all requests of a transfer so far together, each up to when it was sent.
inline curl_off_t timeToConnect(CURL* transfer) {
    curl_off_t time = 0;
    curl_easy_getinfo(transfer, CURLINFO_PRETRANSFER_TIME_T, &time);
    return time;
}

}  // namespace intake
