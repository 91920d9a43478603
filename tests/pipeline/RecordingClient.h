#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "pipeline/IntakeClient.h"

namespace intake {

/// Keeps what is delivered to it, as "ok: answer" or "failed: error". Host's thread.
class RecordingClient final : public IntakeClient {
public:
    using Deliveries = std::vector<std::string>;

    /// The deliveries may be shared with others, and outlive the client.
    explicit RecordingClient(
        std::shared_ptr<Deliveries> deliveries = std::make_shared<Deliveries>())
        : deliveries_(std::move(deliveries)) {}

    void deliver(bool success, const std::string& answer, const std::string& error) override {
        deliveries_->push_back(success ? "ok: " + answer : "failed: " + error);
        if (onDeliver) {
            onDeliver();
        }
    }

    const Deliveries& deliveries() const { return *deliveries_; }

    /// What the host does with the answer.
    std::function<void()> onDeliver;

private:
    std::shared_ptr<Deliveries> deliveries_;
};

}  // namespace intake
