#pragma once

#include <deque>
#include <string_view>
#include <variant>

#include "workbench/cobalt/ScriptError.h"
#include "workbench/cobalt/Target.h"
#include "workbench/cobalt/Value.h"

namespace cobalt {

struct Assignment {
    Target target;
    Value value;
};

/// A deque, which grows without copying and can be let go of from the front.
using Assignments = std::deque<Assignment>;

/// Parses a whole script. The assignments refer to its text.
///
///     script     = { assignment | ";" }
///     assignment = target "=" [ value { "," value } [ "," ] ] ";"
///     target     = name | name "[" key "]" | name "[" first "-" last "]"
///     value      = quoted | unquoted | "{" { assignment | ";" } "}" | "{" { element } "}"
///     element    = ( [ "=" ] value | "[" first "-" last "]=" … ";" ) ( "," | ";" )
///
/// A name runs to "=" or "[", a key to "]". White space between these is skipped.
/// A quoted text is framed by one double quote or by two. In a frame of two, the text is empty when
/// ";", "," or "}" follows the opening quotes, else it ends at the next two quotes before one of
/// those. In a frame of one it ends at the next quote before ";". Nothing is escaped.
/// An unquoted value that is no number is text: all up to the ";" of a plain name, up to "," or ";"
/// among the values of an entry, a range or a list. None at all is an empty text.
/// A value for a plain name replaces the old one, entries and ranges are set among the old ones.
std::variant<Assignments, ScriptError> parseScript(std::string_view script);

}  // namespace cobalt
