#pragma once

#include <memory>

#include "tests/fakes/platform/FakeHttpClient.h"

namespace intake {

/// Makes clients without a script: whatever they send times out.
class FakeHttpClients final : public HttpClients {
public:
    std::unique_ptr<HttpClient> create(const EndMark&) override {
        return std::make_unique<FakeHttpClient>();
    }
};

}  // namespace intake
