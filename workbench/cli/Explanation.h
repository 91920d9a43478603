#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "workbench/cli/Redaction.h"
#include "workbench/probe/explain/Ladder.h"

namespace workbench {

/// A remedy that the plugin has just loaded with.
struct Confirmed {
    probe::Remedy remedy;
    std::size_t records;
};

/// What a load came to and why, for people or for programs.
struct Explanation {
    std::string name;  // of the instance
    probe::Ladder ladder;
    std::optional<std::size_t> records;  // that were written; nothing when nothing was loaded
    std::size_t bytes = 0;               // of the script
    double seconds = 0;
    std::optional<Confirmed> confirmed;

    bool isOk() const { return !ladder.failed(); }

    /// The stage that the confirmed remedy mends.
    probe::Stage stageToMend() const;

    /// Hides secrets in all that a source, a server or the plugin may have said.
    void hide(const Redaction& redact);

    /// In lines of text, broken between words where they are longer than `columns`; `hasUnicode`
    /// when the terminal shows more than ASCII.
    std::string text(bool hasUnicode, std::size_t columns) const;

    /// As one JSON object.
    std::string json() const;

private:
    /// Puts what becomes of them in the place of all texts but the remedy.
    void rewrite(const std::function<std::string(std::string)>& rewritten);
};

}  // namespace workbench
