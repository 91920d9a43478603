#pragma once

#include <chrono>

#include "workbench/probe/fetch/linux/origin.h"

namespace probe {

// What speaks at a server's port. Each makes a connection of its own, which carries nothing of the
// source and no credentials.

/// Whether it makes a secure connection. Nothing is sent over it.
bool speaksTls(const Origin& origin, std::chrono::milliseconds limit);

/// Whether it answers a plain request for the head of its first page.
bool speaksPlainHttp(const Origin& origin, std::chrono::milliseconds limit);

}  // namespace probe
