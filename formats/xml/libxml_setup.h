#pragma once

namespace intake {

/// Readies libxml2, and keeps it from printing what goes wrong, on the calling thread only: the
/// host may use the library too. To be called before anything of it is; any thread.
void setUpLibxml();

}  // namespace intake
