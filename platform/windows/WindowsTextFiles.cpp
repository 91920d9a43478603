#include "platform/windows/WindowsTextFiles.h"

#include <fstream>

namespace intake {

namespace {

class WindowsTextFile final : public TextFile {
public:
    /// Emptied first: a stream that appends cannot do that too.
    explicit WindowsTextFile(const std::string& path) {
        if (std::ofstream(path, std::ios::trunc)) {
            file_.open(path, std::ios::app);
        }
    }

    bool isOpen() const { return file_.is_open(); }
    void append(std::string_view text) override { file_ << text << std::flush; }

private:
    std::ofstream file_;
};

}  // namespace

std::unique_ptr<TextFile> WindowsTextFiles::create(const std::string& path) {
    auto file = std::make_unique<WindowsTextFile>(path);
    return file->isOpen() ? std::move(file) : nullptr;
}

}  // namespace intake
