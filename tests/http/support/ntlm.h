#pragma once

#include <string>

namespace intake {

// An NTLM exchange as a server sees it. Its user is "designer" with the password "secret".

/// The second message, in base64: the server's challenge.
std::string ntlmChallenge();

/// Expects an Authorization header with the first message: a well-formed wish to negotiate.
void expectNtlmNegotiation(const std::string& header);

/// Expects an Authorization header with the third message: it names the user and proves the
/// password for ntlmChallenge by NTLM version 2.
void expectNtlmProof(const std::string& header);

}  // namespace intake
