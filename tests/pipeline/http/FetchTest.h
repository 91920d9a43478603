#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "pipeline/RDR_HTTP.h"
#include "platform/Platform.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/fakes/platform/FakeDiagnostics.h"
#include "tests/fakes/platform/FakeHttpClient.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// What a fetch came to: its result, the body and the whole standard output.
struct Fetched {
    bool succeeded;
    std::string body;
    std::string output;

    bool operator==(const Fetched&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Fetched& fetched);

/// What a fetch says.
inline const std::string RETRIEVED = "The resource was successfully retrieved.\n";
inline const std::string SERVER_ASKS =
    " The server requires authentication. Sending credentials...\n";
inline const std::string PROXY_ASKS =
    "The proxy requires authentication.  Sending credentials...\n";

/// The first call of every fetch of the default URL.
inline const std::string OPEN =
    "open 'www.example.com' port 80 path '/feed.json' agent 'NXR/1.0'\n";

/// A transport between a scripted HTTP client and a log in a directory of its own.
class FetchTest : public testing::Test {
protected:
    Fetched fetch(const std::string& url = "http://www.example.com/feed.json");

    /// All that was logged.
    std::string log() const;

    TempWorkingDirectory directory_;
    FakeClock clock_;
    ReaderLogger logger_{clock_, systemPlatform().textFiles};
    FakeDiagnostics diagnostics_;
    FakeHttpClient client_;
    RequestRecord request_;
    RDR_HTTP transport_{client_, logger_, diagnostics_};
};

}  // namespace intake
