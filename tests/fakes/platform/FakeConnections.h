#pragma once

#include <functional>

#include "platform/KeptConnections.h"

namespace intake {

/// Connections that are none, for fake services.
class FakeConnections final : public KeptConnections {
public:
    void close() override {
        if (onClose) {
            onClose();
        }
    }

    std::function<void()> onClose;
};

}  // namespace intake
