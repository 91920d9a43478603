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

    /// The head of a request, of which each header of the instance is hidden, however short.
    std::string shownRequest(std::string head) const;

    /// Whether there is a secret in the text.
    bool hides(const std::string& text) const { return (*this)(text) != text; }

    /// The text of a parameter: hidden is also each secret that has its place in it, however short.
    std::string shown(const std::string& text, std::string_view parameter) const;

    /// The text with nothing in the place of each secret. The text of a parameter is a setting: out
    /// of it are taken those that have their place in it, however short, and of others only
    /// passwords that are too long to stand in it by chance.
    std::string without(std::string text, std::string_view parameter = "") const;

    /// Hides the secrets of another one too, or of others.
    void include(const Redaction& other) { include(std::vector{&other}); }
    void include(const std::vector<const Redaction*>& others);

    /// A text that somebody edited who saw `original` with its secrets hidden, with the secrets put
    /// back: each where the same stands before it, in its line or its property, as did before.
    /// Nothing when that is so of none. With a parameter, `original` was shown as its text.
    std::optional<std::string> restored(const std::string& edited, const std::string& original,
                                        std::string_view parameter = "") const;

private:
    using Texts = std::vector<std::string>;

    /// A text whose secrets are hidden, and these in their order.
    struct Hidden {
        std::string text;
        Texts secrets;
    };

    void addThose(std::string_view parameter, const std::string& text, bool isXml);
    void sort();
    bool isHeader(std::string_view name) const;
    static Hidden hideThose(const std::string& text, std::string_view parameter);
    Texts hiddenIn(const std::string& original, std::string_view parameter) const;

    Texts secrets_;    // the longest first
    Texts passwords_;  // and users; those of them that settings are without
    Texts headers_;    // the names of those whose values are secrets
};

}  // namespace workbench
