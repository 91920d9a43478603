#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "formats/json/JsonDocument.h"

namespace workbench {

/// What a page wants to set: parameters by name, values as a user writes them.
struct EditRequest {
    std::uint64_t revision = 0;  // of the instance, as the page knows it
    std::vector<std::pair<std::string, std::string>> values;
};

/// Nothing when the body is not {"revision": 3, "set": {"filename": "x"}}.
std::optional<EditRequest> editRequestIn(const std::string& body);

/// What the body says that the page knows: {"revision": 3}; nothing when it says nothing of that.
std::optional<std::uint64_t> revisionIn(const std::string& body);

/// The body as a JSON object; nothing when it is none.
std::optional<intake::JsonDocument> objectIn(const std::string& body);

/// The member of that name, a text; `absent` where there is none, nothing where it is no text.
std::optional<std::string> textIn(const intake::JsonDocument& document, const char* name,
                                  std::optional<std::string> absent = {});

/// The member of that name, true or false; `absent` where there is none, nothing where it is
/// neither.
std::optional<bool> truthIn(const intake::JsonDocument& document, const char* name,
                            std::optional<bool> absent = {});

/// The member of that name, a text, of a body that is a JSON object; empty where there is none.
std::string textIn(const std::string& body, const char* name);

/// Whether the member of that name is true.
bool isSetIn(const std::string& body, const char* name);

}  // namespace workbench
