#pragma once

#include <memory>

#include "tests/http/support/TlsServer.h"
#include "tests/http/support/certificates.h"

namespace intake {

/// For a ScriptedServer that serves HTTPS.
std::shared_ptr<TlsServer> overTls(const TlsFiles& files);

/// For one that knows TLS 1.1 and nothing later.
std::shared_ptr<TlsServer> overOldTls(const TlsFiles& files);

}  // namespace intake
