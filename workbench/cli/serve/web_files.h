#pragma once

#include <string_view>

namespace workbench {

/// A file of the page, which is part of the program.
struct WebFile {
    std::string_view path;  // "/app.js"
    const char* contentType;
    std::string_view content;
};

/// Nullptr where there is none. "/" is the page itself.
const WebFile* findWebFile(std::string_view path);

}  // namespace workbench
