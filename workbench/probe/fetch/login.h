#pragma once

#include <string>

#include "workbench/probe/Settings.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

inline constexpr long proxyLogin = 407;  // the status by which a proxy asks for one

/// What everything says of a login that was refused, as part of a sentence.
inline constexpr const char* notSentAgain = "not sent again: accounts lock after a few times";

/// Whether a server or a proxy that answers so asks for a login.
bool asksForLogin(long status);

/// What is wrong with the login of an answer that asks for one, in sentences.
std::string loginFault(const Settings& settings, const Fetched& source);

}  // namespace probe
