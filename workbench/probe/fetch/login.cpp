#include "workbench/probe/fetch/login.h"

namespace probe {

bool asksForLogin(long status) {
    constexpr long unauthorised = 401;
    return status == unauthorised || status == proxyLogin;
}

std::string loginFault(const Settings& settings, const Fetched& source) {
    if (source.credentialsRefused)
        return std::string("It refuses the user name or the password. They were ") + notSentAgain +
               ".";
    return settings.useAuth || source.status == proxyLogin
               ? "It asks for a login."
               : "It asks for a login, and none is sent.";
}

}  // namespace probe
