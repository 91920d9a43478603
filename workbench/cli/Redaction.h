#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/probe/Settings.h"

namespace workbench {

/// What stands in the place of a secret.
inline constexpr std::string_view hiddenText = "••••";

/// Hides the secrets of an instance: its passwords, the values of its headers, those of its
/// connection string and the user in its address.
class Redaction {
public:
    explicit Redaction(const probe::Settings& settings);

    /// The text with dots in the place of each secret.
    std::string operator()(std::string text) const;

    /// Whether there is a secret in the text.
    bool hides(const std::string& text) const { return (*this)(text) != text; }

    /// The text with nothing in the place of each secret.
    std::string without(std::string text) const;

    /// Hides the secrets of another one too, or of others.
    void include(const Redaction& other) { include(std::vector{&other}); }
    void include(const std::vector<const Redaction*>& others);

    /// A text that somebody edited who saw `original` with its secrets hidden, with the secrets put
    /// back: each where the same stands before it, in its line or its property, as did before.
    /// Nothing when that is so of none.
    std::optional<std::string> restored(const std::string& edited,
                                        const std::string& original) const;

private:
    void add(std::string secret);
    void sort();
    std::vector<std::string> hiddenIn(std::string text) const;

    std::vector<std::string> secrets_;  // the longest first
};

}  // namespace workbench
