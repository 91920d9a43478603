#include "workbench/cli/Redaction.h"

#include <algorithm>
#include <sstream>

#include "formats/connection/connection_string.h"
#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace workbench {

namespace {

// Shorter ones would hide half of every text, and are none.
constexpr std::size_t shortestSecret = 3;

bool isSecretKey(std::string_view key) {
    return intake::equalIgnoringCase(key, "Pwd") || intake::equalIgnoringCase(key, "Password");
}

std::vector<std::string> secretsIn(const std::string& connectionString) {
    std::vector<std::string> secrets;
    try {
        const auto connection = intake::ConnectionString::parse(connectionString);
        for (const intake::ConnectionProperty& each : connection.properties()) {
            if (isSecretKey(each.key)) secrets.insert(secrets.end(), {each.value, each.written});
            const bool isList = intake::equalIgnoringCase(each.key, "Extended Properties") &&
                                each.value.find('=') != std::string::npos;
            if (!isList) continue;
            const std::vector<std::string> inner = secretsIn(each.value);
            secrets.insert(secrets.end(), inner.begin(), inner.end());
        }
    } catch (const intake::ConnectionStringError&) {
        secrets.push_back(connectionString);
    }
    return secrets;
}

std::string userInfoOf(const std::string& address) {
    const auto host = address.find("://");
    if (host == std::string::npos) return "";
    const auto end = std::min(address.find_first_of("/?#", host + 3), address.size());
    const auto at = address.rfind('@', end);
    return at == std::string::npos || at < host ? "" : address.substr(host + 3, at - host - 3);
}

/// Long texts are cut, with an ellipsis, and with them the secrets in them.
void hideCut(std::string_view secret, std::string& text) {
    constexpr std::string_view ellipsis = "…";
    constexpr std::size_t shortestPart = 6;
    for (auto at = text.find(ellipsis); at != std::string::npos; at = text.find(ellipsis, at + 1)) {
        const std::string_view before = std::string_view(text).substr(0, at);
        std::size_t length = std::min(secret.size(), before.size());
        while (length >= shortestPart && !before.ends_with(secret.substr(0, length)))
            --length;
        if (length < shortestPart) continue;
        text.replace(at - length, length, hiddenText);
        at = at - length + hiddenText.size();
    }
}

std::size_t countOf(std::string_view part, std::string_view text) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string_view::npos;
         at = text.find(part, at + part.size()))
        ++count;
    return count;
}

/// What stands before each hidden part: back to the line's or the property's begin.
std::vector<std::string> labelsIn(const std::string& text) {
    std::vector<std::string> labels;
    for (auto at = text.find(hiddenText); at != std::string::npos;
         at = text.find(hiddenText, at + hiddenText.size())) {
        const auto separator = at == 0 ? std::string::npos : text.find_last_of("\n;", at - 1);
        const std::size_t begin = separator == std::string::npos ? 0 : separator + 1;
        labels.push_back(text.substr(begin, at - begin));
    }
    return labels;
}

}  // namespace

Redaction::Redaction(const probe::Settings& settings) {
    add(settings.password);
    add(settings.proxyPwd);
    for (const std::string& secret : secretsIn(settings.connStr))
        add(secret);
    for (const std::string* address : {&settings.filename, &settings.proxyUrl}) {
        const std::string user = userInfoOf(*address);
        add(user);
        add(user.substr(user.find(':') + 1));
    }
    std::istringstream headers(settings.customHeaders);
    for (std::string line; std::getline(headers, line);) {
        const auto colon = line.find(':');
        if (colon != std::string::npos)
            add(std::string(intake::trimmed(std::string_view(line).substr(colon + 1), " \t\r")));
    }
    sort();
}

void Redaction::sort() {
    std::sort(secrets_.begin(), secrets_.end(), [](const auto& a, const auto& b) {
        return a.size() != b.size() ? a.size() > b.size() : a < b;
    });
    secrets_.erase(std::unique(secrets_.begin(), secrets_.end()), secrets_.end());
}

void Redaction::include(const std::vector<const Redaction*>& others) {
    for (const Redaction* const other : others)
        secrets_.insert(secrets_.end(), other->secrets_.begin(), other->secrets_.end());
    sort();
}

void Redaction::add(std::string secret) {
    if (secret.size() >= shortestSecret) secrets_.push_back(std::move(secret));
}

std::string Redaction::operator()(std::string text) const {
    for (const std::string& secret : secrets_) {
        for (auto at = text.find(secret); at != std::string::npos;
             at = text.find(secret, at + hiddenText.size()))
            text.replace(at, secret.size(), hiddenText);
        hideCut(secret, text);
    }
    return text;
}

std::string Redaction::without(std::string text) const {
    for (const std::string& secret : secrets_) {
        for (auto at = text.find(secret); at != std::string::npos; at = text.find(secret, at)) {
            text.erase(at, secret.size());
            const bool wasUser =
                std::string_view(text).substr(0, at).ends_with("://") && text[at] == '@';
            if (wasUser) text.erase(at, 1);
        }
    }
    return text;
}

/// What is hidden in a text, in the order in which it stands there.
std::vector<std::string> Redaction::hiddenIn(std::string text) const {
    std::vector<std::string> hidden;
    for (const std::string& secret : secrets_) {
        for (auto at = text.find(secret); at != std::string::npos;
             at = text.find(secret, at + hiddenText.size())) {
            const std::size_t before = countOf(hiddenText, std::string_view(text).substr(0, at));
            hidden.insert(hidden.begin() + static_cast<std::ptrdiff_t>(before), secret);
            text.replace(at, secret.size(), hiddenText);
        }
    }
    return hidden;
}

std::optional<std::string> Redaction::restored(const std::string& edited,
                                               const std::string& original) const {
    if (countOf(hiddenText, edited) == 0) return edited;
    if (countOf(hiddenText, original) > 0) return std::nullopt;  // dots that hide nothing
    const std::vector<std::string> secrets = hiddenIn(original);
    std::vector<std::string> labels = labelsIn((*this)(original));
    if (labels.size() != secrets.size()) return std::nullopt;
    std::string text = edited;
    std::size_t at = 0;
    for (const std::string& label : labelsIn(edited)) {
        const auto found = std::find(labels.begin(), labels.end(), label);
        if (found == labels.end()) return std::nullopt;
        const std::string& secret = secrets[static_cast<std::size_t>(found - labels.begin())];
        at = text.find(hiddenText, at);
        text.replace(at, hiddenText.size(), secret);
        at += secret.size();
        *found = "\n";  // used; no label has a line feed
    }
    return text;
}

}  // namespace workbench
