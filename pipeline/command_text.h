#pragma once

// The command text: one load request as a line of `KEY value` pairs, written on the host's thread
// and read back on the worker. Text values are framed by vertical bars; a backslash inside makes
// the next character literal.

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>

#include "pipeline/RequestRecord.h"

namespace intake {

/// The text with a backslash before every backslash and vertical bar.
std::string EscapeValue(std::string_view text);

/// Appends `KEY number ` to a command text.
void appendNumberPair(std::string& command, std::string_view key, int32_t value);

/// Appends `KEY |value| ` to a command text; the value stands as it is.
void appendTextPair(std::string& command, std::string_view key, std::string_view value);

/// Reads one framed value into `target`, skipping what stands before its opening bar. Fails the
/// stream when the closing bar is missing; `target` then holds what was read.
void ReadFramedValue(std::istream& in, std::string& target);

/// Fills `record` from a command text. Reports nothing: a value that cannot be read fails the
/// stream and ends the parsing, words that are no keys are skipped, and what was read stays. Throws
/// std::bad_alloc.
void ParseCommand(RequestRecord& record, std::istream& in);

}  // namespace intake
