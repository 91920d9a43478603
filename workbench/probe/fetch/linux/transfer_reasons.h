#pragma once

#include <curl/curl.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// Why a transfer failed, and what to do about it. The texts name facts in braces: "{server}".
struct Reason {
    CURLcode code;
    FetchFailure::Stage stage;
    const char* words;   // end a sentence about the source
    const char* detail;  // follows the words
    const char* next;    // a sentence
};

/// What is known of a transfer, by its name in a text.
using Facts = std::vector<std::pair<std::string_view, std::string>>;

const Reason& reasonOf(CURLcode code);

/// A text with the facts that it names.
std::string filled(std::string_view text, const Facts& facts);

}  // namespace probe
