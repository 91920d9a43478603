#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "workbench/cli/child_process.h"
#include "workbench/serve/WebMessage.h"

namespace workbench {

/// A body that is JSON.
serve::WebResponse ok(std::string body);

/// With a sentence that may hold anything.
serve::WebResponse refused(unsigned status, const std::string& sentence);

/// Why a request is refused that goes by what its page knows of `what`: "The scene"; nothing where
/// that is the last there is.
std::optional<serve::WebResponse> refusesRevision(std::optional<std::uint64_t> known,
                                                  std::uint64_t last, const std::string& what);

serve::WebResponse busy();
serve::WebResponse accepted(std::string body = "{}\n");

/// What a child that prints JSON has answered.
serve::WebResponse responseOf(const ChildAnswer& answer);

/// A number of the query; `usual` where it is not there.
std::size_t numberIn(const serve::WebRequest& request, const char* name, std::size_t usual);

}  // namespace workbench
