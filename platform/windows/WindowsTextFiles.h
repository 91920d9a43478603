#pragma once

#include "platform/TextFiles.h"

namespace intake {

/// Paths are in the system's code page. Who may read a file follows from its folder.
class WindowsTextFiles final : public TextFiles {
public:
    std::unique_ptr<TextFile> create(const std::string& path) override;
};

}  // namespace intake
