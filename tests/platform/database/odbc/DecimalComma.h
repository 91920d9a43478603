#pragma once

#include <clocale>
#include <stdexcept>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/http/support/ServerProcess.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// Gives the process a locale with a decimal comma and another encoding than UTF-8, as a host may
/// have it, while it lives.
class DecimalComma {
public:
    DecimalComma() {
        runTool("/usr/bin/localedef", {"-i", "de_DE", "-f", "ISO-8859-1",
                                       (directory_.path() / "de_DE.ISO-8859-1").string()});
        if (std::setlocale(LC_ALL, "de_DE.ISO-8859-1") == nullptr) {
            throw std::runtime_error("the locale that was made cannot be used");
        }
    }
    ~DecimalComma() { std::setlocale(LC_ALL, "C"); }
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;

private:
    TempDirectory directory_;
    EnvironmentVariable path_{"LOCPATH", directory_.path().string()};
};

}  // namespace intake
