#pragma once

#include "platform/TextFiles.h"

namespace intake {

class LinuxTextFiles final : public TextFiles {
public:
    std::unique_ptr<TextFile> create(const std::string& path) override;
};

}  // namespace intake
