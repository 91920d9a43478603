#pragma once

namespace intake {

/// What the host's editor shows about the plugin, licence notices included.
extern const char* const ABOUT_TEXT;

}  // namespace intake
