#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace intake {

/// Why a connection string is of no use. It shows no value.
class ConnectionStringError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One `key=value` of a connection string.
struct ConnectionProperty {
    std::string key;      // without the blanks around it
    std::string value;    // without the blanks, quotes or braces around it
    std::string written;  // the value as it stands in the text, without the blanks around it
};

/// The `key=value` pairs of a connection string, in their order. A value may stand in double or
/// single quotes or in braces, in which the closing sign is written twice to be part of the value;
/// it then holds any character, semicolons and blanks at its ends included.
class ConnectionString {
public:
    /// Throws ConnectionStringError for what is no list of pairs; it names the place.
    static ConnectionString parse(std::string_view text);

    /// Like parse, but words without a value are fine, as in `Excel 12.0 Xml;HDR=YES`: each is a
    /// key with an empty value.
    static ConnectionString parseExtendedProperties(std::string_view text);

    /// The property of that name without regard to case, the last one where there are several; null
    /// where there is none.
    const ConnectionProperty* find(std::string_view key) const;

    /// The value of a property; empty where there is none.
    std::string value(std::string_view key) const;

    const std::vector<ConnectionProperty>& properties() const { return properties_; }

    void add(ConnectionProperty property) { properties_.push_back(std::move(property)); }

    /// The pairs as they are written, each with a semicolon behind it.
    std::string text() const;

private:
    std::vector<ConnectionProperty> properties_;
};

}  // namespace intake
