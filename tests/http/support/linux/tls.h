#pragma once

#include <memory>

#include "tests/http/support/TlsServer.h"
#include "tests/http/support/certificates.h"

namespace intake {

/// For a ScriptedServer that serves HTTPS.
std::shared_ptr<TlsServer> overTls(const TlsFiles& files);

}  // namespace intake
