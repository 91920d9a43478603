#pragma once

#include "platform/Clock.h"

namespace intake {

class WindowsClock final : public Clock {
public:
    double milliseconds() override;
    LocalTime localTime() override;
    void sleep(std::chrono::milliseconds duration) override;
};

}  // namespace intake
