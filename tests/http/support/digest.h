#pragma once

#include <string>

namespace intake {

/// Expects a Digest proof that "designer" with the password "secret" asks for `uri`, in answer to
/// the challenge DIGEST.
void expectDigestProof(const std::string& header, const std::string& uri);

}  // namespace intake
