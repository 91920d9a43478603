#pragma once

#include <string>
#include <vector>

#include "tests/http/support/ScriptedServer.h"

namespace intake {

// Demands for a proof, as servers and proxies make them.

inline const std::string BASIC = "Basic realm=\"stage\"";
inline const std::string DIGEST =
    "Digest realm=\"stage\", nonce=\"n7\", qop=\"auth\", algorithm=MD5";
inline const std::string NTLM = "NTLM";
inline const std::string NEGOTIATE = "Negotiate";

/// A 401 that offers schemes, each in a line of its own.
Reply challenge(const std::vector<std::string>& schemes, const std::string& body = "");

/// The same of a proxy: a 407.
Reply proxyChallenge(const std::vector<std::string>& schemes, const std::string& body = "");

/// The Authorization header of each request; empty for one that has none.
std::vector<std::string> proofs(ScriptedServer& server);
std::vector<std::string> proxyProofs(ScriptedServer& proxy);

}  // namespace intake
