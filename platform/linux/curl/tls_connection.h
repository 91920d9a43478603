#pragma once

#include <curl/curl.h>

namespace intake {

// The connection of a transfer under way, where that is one of TLS. To be called by what libcurl
// calls back, since a transfer that has ended has no connection any more.

/// Notices, look by look, whether a transfer leaves more in its connections than it has taken: of
/// what was decrypted and not taken the sockets show nothing. A redirect leads from one connection
/// to another, so each is judged by the last look at it.
class LeftoverWatch {
public:
    void look(CURL* transfer);

    bool hasSeenAny() const { return isLeftBehind_ || isLeft_; }

private:
    const void* connection_ = nullptr;  // that was looked at last; null where it is not one of TLS
    bool isLeft_ = false;               // in that
    bool isLeftBehind_ = false;         // in one before
};

/// Lets go of the list of trusted authorities, two megabytes a connection. Its server has been
/// verified; should it want to agree on everything anew, the connection fails.
void forgetAuthorities(CURL* transfer);

}  // namespace intake
