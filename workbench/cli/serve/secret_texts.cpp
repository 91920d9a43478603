#include "workbench/cli/serve/secret_texts.h"

namespace workbench {

bool isSecret(const lumo::Parameter& parameter) {
    return parameter.name == "password" || parameter.name == "proxyPwd";
}

std::string shownText(const lumo::Parameter& parameter, const std::string& text,
                      const Redaction& redact) {
    if (isSecret(parameter)) return text.empty() ? "" : std::string(hiddenText);
    return redact(text);
}

std::optional<std::string> meantText(const lumo::Parameter& parameter, const std::string& edited,
                                     const std::string& text, const Redaction& redact) {
    if (edited == shownText(parameter, text, redact)) return text;
    return redact.restored(edited, text);
}

}  // namespace workbench
