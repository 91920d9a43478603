#pragma once

#include <libxml/parser.h>

#include <string_view>

#include "platform/EndMark.h"
#include "platform/linux/XmlBuilder.h"

namespace intake {

/// What a parser reads from, piece by piece. Made for one parse.
class XmlInput {
public:
    virtual ~XmlInput() = default;

    /// To be told of the parse before it begins.
    void attach(XmlBuilder& builder) { builder_ = &builder; }

    /// What libxml2 calls; `input` is an XmlInput. Fails once the builder wants no more.
    static int onRead(void* input, char* buffer, int capacity) {
        auto& self = *static_cast<XmlInput*>(input);
        return self.builder_->wantsMore() ? self.read(buffer, capacity) : -1;
    }

private:
    /// Returns how much it has read; 0 at the end, -1 when it fails.
    virtual int read(char* buffer, int capacity) = 0;

    XmlBuilder* builder_ = nullptr;
};

/// A text in memory, which outlives this object.
class TextInput final : public XmlInput {
public:
    explicit TextInput(std::string_view text) : rest_(text) {}

private:
    int read(char* buffer, int capacity) override;

    std::string_view rest_;
};

/// An open file, from where it stands.
class FileInput final : public XmlInput {
public:
    explicit FileInput(int descriptor) : descriptor_(descriptor) {}

    /// Of the read that failed; 0 when none has.
    int error() const { return error_; }

private:
    int read(char* buffer, int capacity) override;

    const int descriptor_;
    int error_ = 0;
};

}  // namespace intake
