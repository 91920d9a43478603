#include "formats/connection/connection_string.h"

#include <optional>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace intake {

namespace {

/// What ends a value that begins with this character; nothing for a plain value.
std::optional<char> closingSign(char first) {
    switch (first) {
        case '"':
        case '\'':
            return first;
        case '{':
            return '}';
        default:
            return {};
    }
}

/// Walks through a connection string.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    /// Takes the next pair; false at the end.
    bool take(ConnectionProperty& property, bool valueNeeded) {
        position_ = text_.find_first_not_of(" \t\r\n;", position_);
        if (position_ == std::string_view::npos) {
            return false;
        }
        const size_t start = position_;
        const size_t keyEnd = std::min(text_.find_first_of("=;", start), text_.size());
        property = {std::string(trimmed(text_.substr(start, keyEnd - start), XML_SPACE)), "", ""};
        position_ = keyEnd;
        if (keyEnd != text_.size() && text_[keyEnd] == '=') {
            ++position_;
            takeValue(property);
        } else if (valueNeeded) {
            fail(start, "there is no \"=\" before the next \";\"");
        }
        if (property.key.empty()) {
            fail(start, "there is no key before the \"=\"");
        }
        return true;
    }

private:
    void takeValue(ConnectionProperty& property) {
        const size_t start = std::min(text_.find_first_not_of(XML_SPACE, position_), text_.size());
        const auto closing =
            start == text_.size() ? std::optional<char>() : closingSign(text_[start]);
        if (closing) {
            takeEnclosed(property.value, start, *closing);
            property.written = text_.substr(start, position_ - start);
            expectEnd();
        } else {
            position_ = std::min(text_.find(';', position_), text_.size());
            property.written = trimmed(text_.substr(start, position_ - start), XML_SPACE);
            property.value = property.written;
        }
    }

    void takeEnclosed(std::string& value, size_t start, char closing) {
        for (position_ = start + 1; position_ < text_.size(); ++position_) {
            if (text_[position_] == closing && !text_.substr(++position_).starts_with(closing)) {
                return;
            }
            value += text_[position_];
        }
        fail(start, std::string("the value that begins here is not closed by ") + closing);
    }

    void expectEnd() {
        position_ = std::min(text_.find_first_not_of(XML_SPACE, position_), text_.size());
        if (position_ != text_.size() && text_[position_] != ';') {
            fail(position_, "a value is closed already, and no \";\" follows");
        }
    }

    [[noreturn]] static void fail(size_t position, const std::string& cause) {
        throw ConnectionStringError("The connection string is wrong at character " +
                                    std::to_string(position + 1) + ": " + cause);
    }

    std::string_view text_;
    size_t position_ = 0;
};

std::vector<ConnectionProperty> scan(std::string_view text, bool valueNeeded) {
    std::vector<ConnectionProperty> properties;
    Scanner scanner(text);
    for (ConnectionProperty property; scanner.take(property, valueNeeded);) {
        properties.push_back(property);
    }
    return properties;
}

}  // namespace

ConnectionString ConnectionString::parse(std::string_view text) {
    ConnectionString result;
    result.properties_ = scan(text, true);
    return result;
}

ConnectionString ConnectionString::parseExtendedProperties(std::string_view text) {
    ConnectionString result;
    result.properties_ = scan(text, false);
    return result;
}

const ConnectionProperty* ConnectionString::find(std::string_view key) const {
    const ConnectionProperty* found = nullptr;
    for (const ConnectionProperty& property : properties_) {
        if (equalIgnoringCase(property.key, key)) {
            found = &property;
        }
    }
    return found;
}

std::string ConnectionString::value(std::string_view key) const {
    const ConnectionProperty* found = find(key);
    return found == nullptr ? std::string() : found->value;
}

std::string ConnectionString::text() const {
    std::string text;
    for (const ConnectionProperty& property : properties_) {
        text.append(property.key).append("=").append(property.written).append(";");
    }
    return text;
}

}  // namespace intake
