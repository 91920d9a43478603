#pragma once

#include <string>
#include <string_view>

namespace intake::html {

/// A page in UTF-8, without byte-order mark; what is no character becomes U+FFFD. Its encoding is
/// that of the mark, else `charset` (the transport's, may be empty), else what a meta element says,
/// else what an XML declaration says, else UTF-8 where the bytes are valid UTF-8, else
/// windows-1252.
std::string decodePage(std::string bytes, std::string_view charset);

/// The encoding that the first of the page's meta elements with a known label names, by its name
/// for iconv; empty when there is none.
std::string_view encodingOfMeta(std::string_view page);

/// The encoding that the XML declaration at the page's start names, by its name for iconv; empty
/// when there is none, or none with a known label.
std::string_view encodingOfXmlDeclaration(std::string_view page);

/// The encoding that browsers take a label for, by its name for iconv; empty when they know none.
/// Case and white space around the label do not count.
std::string_view encodingOfLabel(std::string_view label);

}  // namespace intake::html
