#pragma once

namespace intake {

/// The connections to servers that one worker keeps from one load to the next, where the system's
/// services leave that to us. Whoever makes requests is handed them. Worker thread; one request at
/// a time; outlives the requests.
class KeptConnections {
public:
    virtual ~KeptConnections() = default;

    /// Closes all of them; the next request makes its own. Not while a request lives.
    virtual void close() = 0;
};

}  // namespace intake
