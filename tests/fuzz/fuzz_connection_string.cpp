// Any text is a connection string or is refused, and a user and a password reach a driver as they
// are or not at all: read the way in which the driver reads, the translated string holds them and
// no further key. The first line is the user, the second the password, the rest a whole string.

#include <cstdlib>
#include <string>

#include "formats/connection/odbc_connection_string.h"
#include "formats/connection/sqlite_connection_string.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using namespace intake;

/// What a driver makes of braces: nothing, an end at the first single closing one, or at "};".
enum class Braces { NONE, DOUBLED, UNTIL_SEMICOLON };

struct DriverKind {
    const char* provider;
    Braces user, password;
};

constexpr DriverKind KINDS[] = {
    {"SQLOLEDB", Braces::UNTIL_SEMICOLON, Braces::UNTIL_SEMICOLON},
    {"PostgreSQL", Braces::NONE, Braces::DOUBLED},
    {"MariaDB", Braces::DOUBLED, Braces::DOUBLED},
};

/// Takes a value and the semicolon behind it off the text.
std::string takeValue(std::string_view& text, Braces braces) {
    std::string value;
    size_t end = text.find(';');
    if (braces == Braces::UNTIL_SEMICOLON && text.starts_with('{')) {
        end = text.find("};");
        value = text.substr(1, end - 1);
        end += 1;
    } else if (braces == Braces::DOUBLED && text.starts_with('{')) {
        for (end = 1; text.at(end) != '}' || text.substr(++end).starts_with('}'); ++end) {
            value += text.at(end);
        }
    } else {
        value = text.substr(0, end);
    }
    text.remove_prefix(end + 1);
    return value;
}

void expect(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::string inQuotes(const std::string& value) {
    std::string quoted = "\"";
    for (const char c : value) {
        quoted.append(c == '"' ? 2 : 1, c);
    }
    return quoted + "\"";
}

/// Checks `key=value;` at the start of the text, and takes it off.
void expectPair(std::string_view& text, const std::string& key, const std::string& value,
                Braces braces) {
    expect(text.starts_with(key + "="));
    text.remove_prefix(key.size() + 1);
    expect(takeValue(text, braces) == value);
}

void translate(const DriverKind& kind, const std::string& user, const std::string& password) {
    const auto connection =
        ConnectionString::parse("Database=x;User ID=" + inQuotes(user) +
                                ";Password=" + inQuotes(password) + ";Provider=" + kind.provider);
    const std::string translated = toOdbc(connection).text();
    std::string_view rest = translated;
    rest.remove_prefix(rest.find("UID="));
    expectPair(rest, "UID", user, kind.user);
    expectPair(rest, "PWD", password, kind.password);
    expect(rest.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    const std::string user = input.line(), password = input.line();
    for (const DriverKind& kind : KINDS) {
        try {
            translate(kind, user, password);
        } catch (const ConnectionStringError&) {
            // The driver could not be given one of them.
        }
    }
    try {
        ConnectionString::parseExtendedProperties(input.rest());
        const auto connection = ConnectionString::parse(input.rest());
        sqliteSettings(connection);
        toOdbc(connection);
    } catch (const ConnectionStringError&) {
        // It is none.
    }
    return 0;
}
