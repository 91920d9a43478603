#pragma once

namespace intake {

/// Registers the plugin's identity and all its parameters with the host. Host's thread.
void registerLibrary();

}  // namespace intake
