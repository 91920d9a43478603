#pragma once

#include <memory>
#include <string>

#include "pipeline/IntakeClient.h"

namespace intake {

/// One entry of a ring: a request (the command text) or an answer (all three).
struct IntakeCommand {
    std::weak_ptr<IntakeClient> client;
    std::string text{};
    std::string error{};
    bool success = false;
};

}  // namespace intake
