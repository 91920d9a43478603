#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <string_view>

namespace workbench {

/// Writes JSON piece by piece, indented or in one line. The caller opens and closes in pairs and,
/// inside an object, writes a name before each value.
class JsonWriter {
public:
    enum class Layout { Indented, OneLine };

    explicit JsonWriter(Layout layout = Layout::Indented) : layout_(layout) {}

    void open(char bracket);
    void close(char bracket);
    void name(std::string_view name);
    void text(std::string_view text);
    void boolean(bool value);
    void null();

    /// The number as it was written, when JSON can write it so; else its value, or a text when it
    /// is infinite.
    void number(std::string_view written, double value);
    void number(double value);

    /// A name and its value.
    void member(std::string_view name, std::string_view value);
    void member(std::string_view name, double value);
    template <std::integral Integer>
    void member(std::string_view name, Integer value) {
        this->name(name);
        if constexpr (std::same_as<Integer, bool>) {
            boolean(value);
        } else {
            number(std::to_string(value), static_cast<double>(value));
        }
    }
    /// Null for nothing.
    template <class Value>
    void member(std::string_view name, const std::optional<Value>& value) {
        if (value) return member(name, *value);
        this->name(name);
        null();
    }

    /// All that was written, ended by a line feed.
    std::string take() { return std::move(out_) + '\n'; }

private:
    void startValue();
    void startLine();
    void appendQuoted(std::string_view text);

    const Layout layout_;
    std::string out_;
    std::size_t depth_ = 0;
    bool first_ = true;
    bool afterName_ = false;
};

}  // namespace workbench
