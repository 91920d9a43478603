#include "workbench/cli/serve/secret_texts.h"

namespace workbench {

std::string shownText(const lumo::Parameter& parameter, const std::string& text,
                      const Redaction& redact) {
    return redact.shown(text, parameter.name);
}

std::optional<std::string> meantText(const lumo::Parameter& parameter, const std::string& edited,
                                     const std::string& text, const Redaction& redact) {
    if (edited == shownText(parameter, text, redact)) return text;
    return redact.restored(edited, text, parameter.name);
}

}  // namespace workbench
