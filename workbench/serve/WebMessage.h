#pragma once

#include <map>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace serve {

struct NameOrder {
    using is_transparent = void;
    bool operator()(std::string_view one, std::string_view other) const;
};

/// What a browser asks for.
struct WebRequest {
    std::string method;
    std::string path;                                       // "/api/v1/about", not decoded
    std::string query;                                      // what stands behind the question mark
    std::map<std::string, std::string, NameOrder> headers;  // names without regard to case
    std::string body;
    std::stop_token left{};  // requested when whoever asked does not wait for the answer any more

    /// Empty where there is none.
    const std::string& header(std::string_view name) const;

    /// A value of the query, decoded; empty where there is none.
    std::string parameter(std::string_view name) const;
};

/// What it is answered.
struct WebResponse {
    unsigned status = 200;
    std::string contentType = "application/json";
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers;  // further ones
};

/// The text with "%20" and the like, and "+" for a blank where `isQuery`, as they are meant.
std::string decoded(std::string_view text, bool isQuery);

/// An answer that is an error: {"error": "…"}. The text has no quotes in it.
WebResponse refusal(unsigned status, std::string_view text);

}  // namespace serve
