#include <chrono>

#include "workbench/probe/LookFailure.h"
#include "workbench/probe/fetch/linux/Transfer.h"
#include "workbench/probe/fetch/linux/transfer_reasons.h"
#include "workbench/probe/fetch/source_start.h"
#include "workbench/probe/recognise.h"

namespace probe {

namespace {

constexpr std::chrono::seconds patience(10);

[[noreturn]] void fail(CURLcode code) {
    throw LookFailure(filled(reasonOf(code).words, {{"seconds", std::to_string(patience.count())},
                                                    {"library", curl_easy_strerror(code)}}));
}

void setUp(Transfer& transfer, const std::string& url, const Request& request) {
    transfer.set(CURLOPT_URL, url.c_str());
    transfer.set(CURLOPT_PATH_AS_IS, 1L);
    transfer.set(CURLOPT_USERAGENT, "NXR/1.0");
    std::vector<std::string> headers{"Accept:"};  // the plugin sends none
    headers.insert(headers.end(), request.headers.begin(), request.headers.end());
    transfer.setHeaders(headers);
    if (request.user.empty()) return;
    transfer.set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_ANY));
    transfer.set(CURLOPT_USERNAME, request.user.c_str());
    transfer.set(CURLOPT_PASSWORD, request.password.c_str());
}

void refuseErrors(const Transfer& transfer) {
    constexpr long firstErrorStatus = 400, loginRequired = 401;
    const long status = transfer.number(CURLINFO_RESPONSE_CODE);
    if (!transfer.isHttp() || status < firstErrorStatus) return;
    if (status == loginRequired)
        throw LookFailure(
            "is kept behind a user name and a password, and these are none or others (401); "
            "set useAuth, userName and password");
    throw LookFailure("is not to be had: the server answers with status " + std::to_string(status));
}

}  // namespace

std::string startOfUrl(const std::string& url, const Request& request) {
    Transfer transfer;
    setUp(transfer, url, request);
    std::string start;
    const CURLcode code = transfer.run(patience, [&start](std::string_view bytes) {
        start.append(bytes);
        return start.size() < recognisableBytes;
    });
    refuseErrors(transfer);
    const bool isCut = code == CURLE_WRITE_ERROR || code == CURLE_OPERATION_TIMEDOUT;
    if (code != CURLE_OK && !(isCut && !start.empty())) fail(code);
    return start;
}

}  // namespace probe
