#pragma once

// What a fetch prints on standard output, and what it logs.

#include <string>

namespace intake {

inline const std::string RETRIEVED = "The resource was successfully retrieved.\n";
inline const std::string SERVER_ASKS =
    " The server requires authentication. Sending credentials...\n";
inline const std::string PROXY_ASKS =
    "The proxy requires authentication.  Sending credentials...\n";

inline const std::string TICKET_WARNING =
    "WARNING: \t\t\tHTTP: Negotiate is offered, but there is no Kerberos ticket.\n";

inline std::string otherStatus(int status) {
    return "Error. Status code " + std::to_string(status) + " returned.\n";
}
inline std::string error(int number) {
    return "Error " + std::to_string(number) + " has occurred.\n";
}
inline std::string errorWithinBody(int number) {
    return "Error " + std::to_string(number) + " in WinHttpQueryDataAvailable.\n";
}

}  // namespace intake
