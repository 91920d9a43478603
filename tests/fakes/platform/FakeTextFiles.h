#pragma once

#include <fstream>

#include "platform/TextFiles.h"

namespace intake {

/// Text files as they are on any system, real ones, without any care of who may read them.
class FakeTextFiles final : public TextFiles {
public:
    std::unique_ptr<TextFile> create(const std::string& path) override {
        return std::make_unique<File>(path);
    }

private:
    class File final : public TextFile {
    public:
        explicit File(const std::string& path) : file_(path) {}
        void append(std::string_view text) override { file_ << text << std::flush; }

    private:
        std::ofstream file_;
    };
};

}  // namespace intake
