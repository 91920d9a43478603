#pragma once

#include <atomic>
#include <memory>

#include "tests/fakes/platform/FakeConnections.h"
#include "tests/fakes/platform/FakeHttpClient.h"

namespace intake {

/// Makes clients without a script: whatever they send times out.
class FakeHttpClients final : public HttpClients {
public:
    std::unique_ptr<KeptConnections> keepConnections() override {
        auto connections = std::make_unique<FakeConnections>();
        connections->onClose = [this] { ++closings; };
        return connections;
    }
    std::unique_ptr<HttpClient> create(KeptConnections&, const EndMark&) override {
        return std::make_unique<FakeHttpClient>();
    }

    std::atomic<int> closings = 0;  // of kept connections, whoever kept them
};

}  // namespace intake
