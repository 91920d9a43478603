#pragma once

namespace intake {

/// Whether what is told to the one URL, such as a password, may be told to the other: they have the
/// same scheme, host and port, or the way leads from http on port 80 to https on port 443 of the
/// same host.
bool mayBeToldToo(const char* one, const char* other);

}  // namespace intake
