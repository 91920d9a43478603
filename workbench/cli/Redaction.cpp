#include "workbench/cli/Redaction.h"

#include <algorithm>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "workbench/cli/secret_places.h"

namespace workbench {

namespace {

// Shorter ones would hide half of every text, and are none.
constexpr std::size_t shortestSecret = 3;

// Shorter ones may stand in a setting by chance, which would load something else without them.
constexpr std::size_t shortestInSettings = 8;

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
    const bool isXml = settings.queryMode == probe::QueryType::Xml;
    for (const probe::TextParameter& row : probe::textParameters())
        addThose(row.name, settings.*row.member, isXml);
    for (const auto& [name, text] : settings.typed)
        addThose(name, text, isXml);
    sort();
}

void Redaction::addThose(std::string_view parameter, const std::string& text, bool isXml) {
    const auto names = parameter == "customHeaders" ? headerNames(text) : Texts();
    headers_.insert(headers_.end(), names.begin(), names.end());
    for (const SecretPlace& place : secretPlaces(parameter, text)) {
        for (const std::string& form : place.forms) {
            if (form.size() >= shortestSecret) secrets_.push_back(form);
            // That of a header may be a host or a type of media, which other settings need.
            const bool isPassword = parameter != "customHeaders";
            if (isPassword && form.size() >= shortestInSettings) passwords_.push_back(form);
        }
        if (isXml && place.inXml.size() >= shortestSecret) secrets_.push_back(place.inXml);
    }
}

void Redaction::sort() {
    for (Texts* const each : {&secrets_, &passwords_, &headers_}) {
        std::sort(each->begin(), each->end(), [](const auto& a, const auto& b) {
            return a.size() != b.size() ? a.size() > b.size() : a < b;
        });
        each->erase(std::unique(each->begin(), each->end()), each->end());
    }
}

void Redaction::include(const std::vector<const Redaction*>& others) {
    for (const Redaction* const other : others) {
        secrets_.insert(secrets_.end(), other->secrets_.begin(), other->secrets_.end());
        passwords_.insert(passwords_.end(), other->passwords_.begin(), other->passwords_.end());
        headers_.insert(headers_.end(), other->headers_.begin(), other->headers_.end());
    }
    sort();
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

std::string Redaction::shownRequest(std::string head) const {
    for (std::size_t begin = 0; begin < head.size();) {
        const auto colon = head.find(':', begin);
        auto end = std::min(head.find('\n', begin), head.size());
        if (colon < end && isHeader(std::string_view(head).substr(begin, colon - begin))) {
            head.replace(colon + 1, end - colon - 1, " " + std::string(hiddenText));
            end = colon + 2 + hiddenText.size();
        }
        begin = end + 1;
    }
    return (*this)(std::move(head));
}

bool Redaction::isHeader(std::string_view name) const {
    return std::any_of(headers_.begin(), headers_.end(), [name](const std::string& each) {
        return intake::equalIgnoringCase(each, intake::trimmed(name, " \t"));
    });
}

std::string Redaction::shown(const std::string& text, std::string_view parameter) const {
    return (*this)(hideThose(text, parameter).text);
}

std::string Redaction::without(std::string text, std::string_view parameter) const {
    const auto places = secretPlaces(parameter, text);
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        text.erase(place->begin, place->length);
        if (text[place->begin] == '@') text.erase(place->begin, 1);
    }
    for (const std::string& secret : parameter.empty() ? secrets_ : passwords_) {
        for (auto at = text.find(secret); at != std::string::npos; at = text.find(secret, at)) {
            text.erase(at, secret.size());
            const bool wasUser =
                std::string_view(text).substr(0, at).ends_with("://") && text[at] == '@';
            if (wasUser) text.erase(at, 1);
        }
    }
    return text;
}

/// Hides those of a parameter where they stand, but not what else may be one.
Redaction::Hidden Redaction::hideThose(const std::string& text, std::string_view parameter) {
    Hidden hidden{text, {}};
    const auto places = secretPlaces(parameter, text);
    for (const SecretPlace& place : places)
        hidden.secrets.push_back(text.substr(place.begin, place.length));
    for (auto place = places.rbegin(); place != places.rend(); ++place)
        hidden.text.replace(place->begin, place->length, hiddenText);
    return hidden;
}

/// What is hidden in a text, in the order in which it stands there.
Redaction::Texts Redaction::hiddenIn(const std::string& original,
                                     std::string_view parameter) const {
    auto [text, hidden] = hideThose(original, parameter);
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
                                               const std::string& original,
                                               std::string_view parameter) const {
    if (countOf(hiddenText, edited) == 0) return edited;
    if (countOf(hiddenText, original) > 0) return std::nullopt;  // dots that hide nothing
    const std::vector<std::string> secrets = hiddenIn(original, parameter);
    std::vector<std::string> labels = labelsIn(shown(original, parameter));
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
