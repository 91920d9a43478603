#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

/// The member of that name, a text, of a body that is a JSON object; empty where there is none.
std::string textIn(const std::string& body, const char* name);

/// Whether the member of that name is true.
bool isSetIn(const std::string& body, const char* name);

/// Whether the member of that name is neither true nor false; one that is not there is neither.
bool isUnclearIn(const std::string& body, const char* name);

/// Whether the body has a member of that name.
bool isToldIn(const std::string& body, const char* name);

}  // namespace workbench
