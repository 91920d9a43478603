#pragma once

#include <curl/curl.h>

namespace intake {

// The connection of a transfer under way, where that is one of TLS. To be called by what libcurl
// calls back, since a transfer that has ended has no connection any more.

/// Whether more was decrypted than was taken.
bool hasDecryptedMore(CURL* transfer);

/// Lets go of the list of trusted authorities, two megabytes a connection. Its server has been
/// verified; should it want to agree on everything anew, the connection fails.
void forgetAuthorities(CURL* transfer);

}  // namespace intake
