#pragma once

#include <algorithm>

#include "tests/http/support/ScriptedServer.h"
#include "tests/workbench/cli/linux/ExplainTest.h"

inline constexpr const char* clubs = R"([{"id": 7, "name": "Quay"}, {"id": 9, "name": "Pier"}])";
inline constexpr const char* signIn = "<!DOCTYPE html><title>Sign in</title><form></form>";
inline constexpr const char* isHtml = "Content-Type: text/html\r\n";
inline constexpr const char* isJson = "Content-Type: application/json\r\n";

inline const Settings login{"useAuth=1", "userName=ada", "password=s3cret-word"};

/// A responder that always gives the same answer.
inline intake::ScriptedServer::Responder always(const intake::Reply& answer) {
    return [answer](const std::string&) { return answer; };
}

/// A test of what `explain` says of servers on loopback.
class ExplainedUrl : public ExplainTest {
protected:
    void expectOf(const std::string& url, const Settings& settings, const std::string& text) const {
        expectExplained(
            joined({"queryMode=JSON", "filename=" + url, "table=Team", "key=id", "xpath=*"},
                   settings),
            text);
    }
    void expectOf(const intake::Reply& answer, const Settings& settings,
                  const std::string& text) const {
        intake::ScriptedServer server(always(answer));
        expectOf(server.url("/clubs"), settings, text);
    }
};

/// How many of these are there.
inline std::size_t countOf(const std::vector<std::string>& proofs) {
    return static_cast<std::size_t>(std::count_if(proofs.begin(), proofs.end(),
                                                  [](const auto& each) { return !each.empty(); }));
}
