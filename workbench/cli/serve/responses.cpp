#include "workbench/cli/serve/responses.h"

#include <cstdlib>
#include <utility>

#include "formats/text/trim.h"
#include "workbench/cli/ExitStatus.h"
#include "workbench/cli/JsonWriter.h"

namespace workbench {

using serve::WebResponse;

WebResponse ok(std::string body) {
    WebResponse response;
    response.body = std::move(body);
    return response;
}

WebResponse refused(unsigned status, const std::string& sentence) {
    JsonWriter out;
    out.open('{');
    out.member("error", sentence);
    out.close('}');
    WebResponse response = ok(out.take());
    response.status = status;
    return response;
}

std::optional<WebResponse> refusesRevision(std::optional<std::uint64_t> known, std::uint64_t last,
                                           const std::string& what) {
    if (!known) return refused(400, "The request names no revision.");
    if (*known != last) return refused(409, what + " has been changed meanwhile.");
    return std::nullopt;
}

WebResponse busy() {
    return refused(503, "The workbench is busy; try again.");
}

WebResponse accepted(std::string body) {
    WebResponse response = ok(std::move(body));
    response.status = 202;
    return response;
}

WebResponse responseOf(const ChildAnswer& answer) {
    if (!answer.out.empty()) return ok(answer.out);
    const std::string error(intake::trimmed(answer.err, " \r\n"));
    const bool isLate =
        answer.status < 0 || answer.status == static_cast<int>(ExitStatus::NoAnswer);
    if (error.empty() || answer.status < 0) return refused(504, "There was no answer in time.");
    return refused(isLate ? 504 : 422, error);
}

std::size_t numberIn(const serve::WebRequest& request, const char* name, std::size_t usual) {
    const std::string text = request.parameter(name);
    return text.empty() ? usual : std::strtoull(text.c_str(), nullptr, 10);
}

}  // namespace workbench
