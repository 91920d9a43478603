#include "workbench/cli/serve/secret_texts.h"

#include "workbench/cli/Redaction.h"

namespace workbench {

std::string shownText(const lumo::Parameter& parameter, const std::string& text,
                      const LiveInstance& instance) {
    const bool isSecret = parameter.name == "password" || parameter.name == "proxyPwd";
    if (isSecret) return text.empty() ? "" : std::string(hiddenText);
    return instance.presentRedaction()(text);
}

std::optional<std::string> meantText(const lumo::Parameter& parameter, const std::string& edited,
                                     const std::string& text, const LiveInstance& instance) {
    if (edited == shownText(parameter, text, instance)) return text;
    return instance.presentRedaction().restored(edited, text);
}

}  // namespace workbench
