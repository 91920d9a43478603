#include "workbench/probe/fetch/linux/other_scheme.h"

#include "workbench/probe/fetch/linux/Transfer.h"

namespace probe {

namespace {

bool ignore(std::string_view) {
    return true;
}

}  // namespace

bool speaksTls(const Origin& origin, std::chrono::milliseconds limit) {
    Transfer transfer;
    transfer.set(CURLOPT_URL, ("https://" + origin.server() + "/").c_str());
    transfer.set(CURLOPT_CONNECT_ONLY, 1L);
    transfer.set(CURLOPT_SSL_VERIFYPEER, 0L);
    transfer.set(CURLOPT_SSL_VERIFYHOST, 0L);
    return transfer.run(limit, ignore) == CURLE_OK;
}

bool speaksPlainHttp(const Origin& origin, std::chrono::milliseconds limit) {
    Transfer transfer;
    transfer.set(CURLOPT_URL, ("http://" + origin.server() + "/").c_str());
    transfer.set(CURLOPT_NOBODY, 1L);
    transfer.set(CURLOPT_FOLLOWLOCATION, 0L);
    return transfer.run(limit, ignore) == CURLE_OK;
}

}  // namespace probe
