#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace probe {

/// What a source is.
enum class Kind {
    Empty,  // nothing, or nothing but white space
    Json,
    Xml,
    Html,         // also XHTML
    Workbook,     // .xlsx and the like
    OldDocument,  // an office document of the old binary form, or an encrypted one
    Zip,          // any other archive
    Gzip,
    Sqlite,
    Pdf,
    Image,
    Text,  // that is none of the above
    Unknown
};

/// How many bytes from a source's start are enough to recognise it.
inline constexpr std::size_t recognisableBytes = std::size_t{256} * 1024;

/// What a source is that begins like this. It looks at the bytes alone, and reads no further than
/// it has to: what is recognised need not be without mistakes.
Kind recognise(std::string_view start);

/// The title of a page that begins like this, in one line; empty when there is none.
std::string titleOf(std::string_view page);

}  // namespace probe
