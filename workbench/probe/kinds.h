#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "workbench/probe/Settings.h"
#include "workbench/probe/recognise.h"

namespace probe {

/// What a source of this kind is called: "an HTML page".
const char* wordsFor(Kind kind);

/// The same of a source that begins like this; of a page with its title.
std::string wordsFor(Kind kind, std::string_view start);

/// The query type that reads sources of this kind; nothing when none does.
std::optional<QueryType> queryTypeFor(Kind kind);

/// A query type as it is called, "HTML", and as it is set: that of HTML is a number without an
/// entry in the list.
const char* nameOf(QueryType type);
const char* valueOf(QueryType type);

}  // namespace probe
