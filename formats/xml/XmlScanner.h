#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/text/ascii.h"
#include "formats/text/utf8.h"
#include "formats/xml/XmlEvents.h"
#include "formats/xml/xml_characters.h"

namespace intake {

/// Reads plain XML several times as fast as a parser can. It knows only what programs usually write
/// into the large parts of a workbook: UTF-8, one default namespace, elements without prefix. It
/// accepts nothing that is not well-formed; whatever it does not know is for the parser to judge.
/// `Events` implements XmlEvents. Belongs to one thread.
template <class Events>
class XmlScanner {
public:
    enum class Outcome {
        SCANNED,  // the whole chunk; more may follow
        ENOUGH,   // the receiver needs nothing more
        UNKNOWN,  // something that it does not know, or the document's end came too early
    };

    explicit XmlScanner(Events& events) : events_(events) {}

    /// Scans the next piece of the document, which does not end within a tag, a reference or a
    /// character. A zero stands behind it.
    Outcome scan(std::string_view chunk) {
        at_ = chunk.data();
        const char* const end = at_ + chunk.size();
        Outcome outcome = !started_ && !takeDeclaration() ? Outcome::UNKNOWN : Outcome::SCANNED;
        started_ = true;
        while (at_ != end && outcome == Outcome::SCANNED) {
            outcome = *at_ == '<' ? takeTag() : takeText(end);
        }
        return outcome;
    }

    /// Whether what was scanned is a whole document.
    bool isComplete() const { return rootSeen_ && nameLengths_.empty(); }

private:
    static constexpr size_t MOST_ATTRIBUTES = 32;
    static constexpr size_t DEEPEST = 100;
    static constexpr size_t LONGEST_NAME = 100;

    bool takeDeclaration() {
        if (takeIf(UTF8_MARK) && !startsWith("<")) {
            return false;
        }
        if (!takeIf("<?xml ")) {
            return true;
        }
        --at_;  // the blank before the first attribute
        if (!takeIf(" version=\"1.0\"")) {
            return false;
        }
        takeIf(" encoding=\"UTF-8\"") || takeIf(" encoding=\"utf-8\"");
        takeIf(" standalone=\"yes\"") || takeIf(" standalone=\"no\"");
        if (!takeIf("?>")) {
            return false;
        }
        takeIf("\r\n");  // as many programs end this line, and no other
        return true;
    }

    bool startsWith(std::string_view text) const {
        // Ends at the zero behind the chunk at the latest.
        for (size_t i = 0; i < text.size(); ++i) {
            if (at_[i] != text[i]) {
                return false;
            }
        }
        return true;
    }

    bool takeIf(std::string_view text) {
        const bool found = startsWith(text);
        at_ += found ? text.size() : 0;
        return found;
    }

    Outcome takeTag() {
        ++at_;
        return *at_ == '/' ? takeEndTag() : takeStartTag();
    }

    Outcome takeEndTag() {
        ++at_;
        if (nameLengths_.empty()) {
            return Outcome::UNKNOWN;
        }
        const size_t length = nameLengths_.back();
        if (!startsWith({names_.data() + names_.size() - length, length}) || at_[length] != '>') {
            return Outcome::UNKNOWN;
        }
        at_ += length + 1;
        names_.erase(names_.size() - length);
        nameLengths_.pop_back();
        return events_.endElement() ? Outcome::SCANNED : Outcome::ENOUGH;
    }

    Outcome takeStartTag() {
        const std::string_view name = takeName();
        if (name.empty() || name.size() > LONGEST_NAME || nameLengths_.size() == DEEPEST ||
            (nameLengths_.empty() && rootSeen_) || !takeAttributes()) {
            return Outcome::UNKNOWN;
        }
        rootSeen_ = true;
        const bool empty = *at_ == '/';
        if (empty && at_[1] != '>') {
            return Outcome::UNKNOWN;
        }
        at_ += empty ? 2 : 1;
        events_.startElement(name, XmlAttributes(attributes_.data(), told_));
        if (!empty) {
            names_.append(name);
            nameLengths_.push_back(static_cast<uint8_t>(name.size()));
            return Outcome::SCANNED;
        }
        return events_.endElement() ? Outcome::SCANNED : Outcome::ENOUGH;
    }

    std::string_view takeName() {
        const char* const start = at_;
        if (isNameStart(*at_)) {
            while (isNameCharacter(*at_)) {
                ++at_;
            }
        }
        return {start, static_cast<size_t>(at_ - start)};
    }

    /// Takes all attributes up to the tag's end. Those with a prefix mean nothing to the readers of
    /// large parts and are not told.
    bool takeAttributes() {
        told_ = 0;
        seen_ = 0;
        while (isBlank(*at_)) {
            do {
                ++at_;
            } while (isBlank(*at_));
            if (*at_ == '>' || *at_ == '/') {
                break;
            }
            if (!takeAttribute()) {
                return false;
            }
        }
        return *at_ == '>' || *at_ == '/';
    }

    bool takeAttribute() {
        const char* const start = at_;
        bool prefixed = false;
        if (takeName().empty()) {
            return false;
        }
        if (*at_ == ':') {
            ++at_;
            prefixed = true;
            if (takeName().empty()) {
                return false;
            }
        }
        const std::string_view name(start, static_cast<size_t>(at_ - start));
        XmlAttribute attribute{name, {}};
        if (seen_ == MOST_ATTRIBUTES || isRepeated(name) || !takeValue(attribute.value)) {
            return false;
        }
        seenNames_[seen_++] = name;
        if (name == "xmlns") {
            return !rootSeen_;
        }
        if (!prefixed) {
            attributes_[told_++] = attribute;
        }
        return true;
    }

    bool isRepeated(std::string_view name) const {
        for (size_t i = 0; i < seen_; ++i) {
            if (seenNames_[i] == name) {
                return true;
            }
        }
        return false;
    }

    bool takeValue(std::string_view& value) {
        if (*at_ != '=' || (at_[1] != '"' && at_[1] != '\'')) {
            return false;
        }
        const char quote = at_[1];
        at_ += 2;
        const char* const start = at_;
        bool ascii = true;
        while (*at_ != quote) {
            if (!isPlainInValue(*at_)) {
                return false;
            }
            ascii = ascii && isAscii(*at_);
            ++at_;
        }
        value = {start, static_cast<size_t>(at_ - start)};
        ++at_;
        return ascii || isXmlUtf8(value);
    }

    Outcome takeText(const char* end) {
        const char* start = at_;
        bool ascii = true;
        decoded_.clear();
        while (*at_ != '<' && at_ != end) {
            if (*at_ == '&') {
                decoded_.append(start, at_);
                if (nameLengths_.empty() || !takeReference(at_, decoded_)) {
                    return Outcome::UNKNOWN;
                }
                start = at_;
                continue;
            }
            if (!isPlainInText(*at_) || startsWith("]]>")) {
                return Outcome::UNKNOWN;
            }
            ascii = ascii && isAscii(*at_);
            ++at_;
        }
        std::string_view text(start, static_cast<size_t>(at_ - start));
        if (!decoded_.empty()) {
            text = decoded_.append(text);
        }
        return (ascii || isXmlUtf8(text)) && tell(text) ? Outcome::SCANNED : Outcome::UNKNOWN;
    }

    bool tell(std::string_view text) {
        if (!nameLengths_.empty()) {
            events_.text(text);
            return true;
        }
        return text.find_first_not_of(" \t\n") == std::string_view::npos;
    }

    Events& events_;
    const char* at_ = nullptr;
    bool started_ = false;
    bool rootSeen_ = false;
    std::string names_;  // of the open elements, one behind the other
    std::vector<uint8_t> nameLengths_;
    std::array<XmlAttribute, MOST_ATTRIBUTES> attributes_;
    std::array<std::string_view, MOST_ATTRIBUTES> seenNames_;
    size_t told_ = 0;
    size_t seen_ = 0;
    std::string decoded_;  // text with references
};

}  // namespace intake
