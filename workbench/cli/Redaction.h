#pragma once

#include <string>
#include <vector>

#include "workbench/probe/Settings.h"

namespace workbench {

/// Hides the secrets of an instance: its passwords, the values of its headers, those of its
/// connection string and the user in its address.
class Redaction {
public:
    explicit Redaction(const probe::Settings& settings);

    /// The text with dots in the place of each secret.
    std::string operator()(std::string text) const;

private:
    void add(std::string secret);

    std::vector<std::string> secrets_;  // the longest first
};

}  // namespace workbench
