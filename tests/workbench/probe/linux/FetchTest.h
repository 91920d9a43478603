#pragma once

#include <list>
#include <string>
#include <vector>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/workbench/probe/fetch_support.h"

namespace probe {

using intake::reply;
using intake::ScriptedServer;
using intake::Then;

/// A test of fetches from servers on loopback. No proxy of its environment counts.
class FetchTest : public testing::Test {
protected:
    FetchTest() {
        for (const char* const name : {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY",
                                       "all_proxy", "ALL_PROXY", "no_proxy", "NO_PROXY"})
            environment_.emplace_back(name, std::nullopt);
    }

private:
    std::list<intake::EnvironmentVariable> environment_;
};

/// Settings with user name and password.
inline Settings withUser(QueryType type, const std::string& url) {
    Settings settings = settingsFor(type, url);
    settings.useAuth = true;
    settings.userName = "ada";
    settings.password = "s3cret";
    return settings;
}

/// How many of the requests have a header of that name, such as "Authorization".
inline int countOf(ScriptedServer& server, const std::string& header) {
    int count = 0;
    for (const std::string& request : server.requests())
        count += request.find("\n" + header + ":") == std::string::npos ? 0 : 1;
    return count;
}

}  // namespace probe
