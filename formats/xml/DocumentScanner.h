#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "formats/text/utf8.h"
#include "formats/xml/XmlTag.h"
#include "formats/xml/xml_characters.h"

namespace intake {

/// Where a run of plain bytes ends. All that is beyond ASCII is plain, and judged afterwards.
enum RunEnd : uint8_t { ENDS_TEXT = 1, ENDS_DOUBLE_QUOTED = 2, ENDS_SINGLE_QUOTED = 4 };

constexpr std::array<uint8_t, 256> classifyRunEnds() {
    std::array<uint8_t, 256> ends{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool isSpecial = byte < ' ' || byte == '<' || byte == '&' || byte == 0x7F;
        const bool isText = byte == '\t' || byte == '\n';
        ends[byte] = static_cast<uint8_t>(((isSpecial && !isText) || byte == '>' ? ENDS_TEXT : 0) |
                                          (isSpecial || byte == '"' ? ENDS_DOUBLE_QUOTED : 0) |
                                          (isSpecial || byte == '\'' ? ENDS_SINGLE_QUOTED : 0));
    }
    return ends;
}

inline constexpr std::array<uint8_t, 256> RUN_ENDS = classifyRunEnds();

/// Reads a document of UTF-8 several times as fast as a parser can, in windows of any size. It
/// knows all but document types and names beyond ASCII, and accepts nothing that is not
/// well-formed; whatever it does not know is for the parser to judge. `Receiver` is told of
/// elements, texts (as one piece, resolved), sections, comments and instructions, and says of each
/// start tag whether it can go on. Belongs to one thread.
template <class Receiver>
class DocumentScanner {
public:
    explicit DocumentScanner(Receiver& receiver) : receiver_(receiver) {}

    /// Takes what is whole of a window, behind which stands a zero; returns how many bytes that
    /// were. What was not taken is to begin the next window.
    size_t scan(const char* window, size_t size, bool isLast) {
        at_ = window;
        end_ = window + size;
        isLast_ = isLast;
        while (at_ != end_) {
            const char* const start = at_;
            if (!takeToken()) {
                isUnknown_ = isLast || isRefused_ || end_ - at_ > LONGEST_LOOK;
                return static_cast<size_t>(start - window);
            }
        }
        return size;
    }

    /// Whether it met something that it does not know.
    bool isUnknown() const { return isUnknown_; }

    /// Whether what was taken is a whole document.
    bool isComplete() const { return !isUnknown_ && rootSeen_ && nameLengths_.empty(); }

private:
    static constexpr size_t MOST_ATTRIBUTES = 64;
    static constexpr std::ptrdiff_t LONGEST_LOOK = 64;  // how far it looks ahead
    static constexpr size_t LONGEST_NAME = 10'000;      // far below the parser's own limit
    static constexpr size_t BLOCK = 32;
    static constexpr uint32_t LITERAL = UINT32_MAX;

    bool takeToken() {
        if (!isStarted_) {
            isStarted_ = takeDeclaration();
            return isStarted_;
        }
        if (*at_ != '<') {
            return takeText();
        }
        ++at_;
        switch (*at_) {
            case '/':
                return takeEndTag();
            case '!':
                return takeIf("!--") ? takeComment() : takeIf("![CDATA[") && takeSection();
            case '?':
                return takeInstruction();
            default:
                return takeStartTag();
        }
    }

    bool startsWith(std::string_view text) const {
        for (size_t i = 0; i < text.size(); ++i) {  // ends at the zero at the latest
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

    static bool isSpace(char byte) {
        return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
    }

    bool skipSpace() {
        const char* const start = at_;
        while (isSpace(*at_)) {
            ++at_;
        }
        return at_ != start;
    }

    bool takeDeclaration() {
        constexpr std::ptrdiff_t LONGEST = 200;
        if (!isLast_ && end_ - at_ < LONGEST) {
            at_ = end_;  // it is looked at as a whole
            return false;
        }
        takeIf(UTF8_MARK);
        if (!startsWith("<?xml") || !isSpace(at_[5])) {
            return startsWith("<");
        }
        at_ += 5;
        if (!takePseudoAttribute("version", {"1.0", "1.0"})) {
            return false;
        }
        takePseudoAttribute("encoding", {"UTF-8", "utf-8"});
        takePseudoAttribute("standalone", {"yes", "no"});
        skipSpace();
        return takeIf("?>");
    }

    bool takePseudoAttribute(std::string_view name, std::array<std::string_view, 2> values) {
        const char* const start = at_;
        if (skipSpace() && takeIf(name) && takeIf("=") && (*at_ == '"' || *at_ == '\'')) {
            const char quote = *at_++;
            if ((takeIf(values[0]) || takeIf(values[1])) && *at_ == quote) {
                ++at_;
                return true;
            }
        }
        at_ = start;
        return false;
    }

    /// Whether a name without colons was taken.
    bool takeNcName() {
        if (!isNameStart(*at_)) {
            return false;
        }
        do {
            ++at_;
        } while (isNameCharacter(*at_));
        return true;
    }

    bool takeName(XmlQName& name) {
        const char* const start = at_;
        name.prefixLength = 0;
        if (!takeNcName()) {
            return false;
        }
        if (*at_ == ':') {
            name.prefixLength = static_cast<size_t>(at_ - start);
            ++at_;
            if (!takeNcName()) {
                return false;
            }
        }
        name.whole = {start, static_cast<size_t>(at_ - start)};
        return *at_ != ':' && isAscii(*at_) && name.whole.size() <= LONGEST_NAME;
    }

    bool takeEndTag() {
        ++at_;
        if (nameLengths_.empty()) {
            return false;
        }
        const size_t length = nameLengths_.back();
        if (!takeIf({names_.data() + names_.size() - length, length})) {
            return false;
        }
        skipSpace();
        if (*at_ != '>') {
            return false;
        }
        ++at_;
        names_.resize(names_.size() - length);
        nameLengths_.pop_back();
        receiver_.endElement();
        return true;
    }

    bool takeStartTag() {
        XmlQName name;
        bool isEmpty = false;
        if (!takeName(name) || (nameLengths_.empty() && rootSeen_) || !takeAttributes(isEmpty)) {
            return false;
        }
        isRefused_ = !receiver_.startElement({name, {attributes_.data(), count_}, isPlain_});
        if (isRefused_) {
            return false;
        }
        rootSeen_ = true;
        if (isEmpty) {
            receiver_.endElement();
        } else {
            names_.append(name.whole);
            nameLengths_.push_back(static_cast<uint32_t>(name.whole.size()));
        }
        return true;
    }

    bool takeAttributes(bool& isEmpty) {
        count_ = 0;
        seen_ = 0;
        isPlain_ = true;
        decoded_.clear();
        for (;;) {
            const bool isApart = skipSpace();
            isEmpty = *at_ == '/';
            if (isEmpty ? at_[1] == '>' : *at_ == '>') {
                at_ += isEmpty ? 2 : 1;
                break;
            }
            if (!isApart || count_ == MOST_ATTRIBUTES || !takeAttribute()) {
                return false;
            }
        }
        if (!decoded_.empty()) {
            lendDecoded();
        }
        return true;
    }

    bool takeAttribute() {
        XmlTagAttribute& attribute = attributes_[count_];
        if (!takeName(attribute.name) || isRepeated(attribute.name.whole)) {
            return false;
        }
        isPlain_ = isPlain_ && attribute.name.prefixLength == 0 && attribute.name.whole != "xmlns";
        skipSpace();
        if (*at_ != '=') {
            return false;
        }
        ++at_;
        skipSpace();
        return (*at_ == '"' || *at_ == '\'') && takeValue(attribute.value) && ++count_ > 0;
    }

    /// Most names are told apart by a bit each.
    bool isRepeated(std::string_view name) {
        const auto last = static_cast<unsigned char>(name.back());
        const auto first = static_cast<unsigned char>(name.front());
        const uint64_t bit = uint64_t{1} << ((name.size() * 7 + first * 5 + last) & 63);
        const bool mayBe = (seen_ & bit) != 0;
        seen_ |= bit;
        for (size_t i = 0; mayBe && i < count_; ++i) {
            if (attributes_[i].name.whole == name) {
                return true;
            }
        }
        return false;
    }

    bool takeValue(std::string_view& value) {
        const char quote = *at_++;
        const uint8_t ending = quote == '"' ? ENDS_DOUBLE_QUOTED : ENDS_SINGLE_QUOTED;
        const char* start = at_;
        const size_t decodedStart = decoded_.size();
        decodedAt_[count_] = LITERAL;
        bool isAllAscii = takeRun(ending);
        while (*at_ != quote) {
            decodedAt_[count_] = static_cast<uint32_t>(decodedStart);
            decoded_.append(start, at_);
            if (!takeSpecial(true)) {
                return false;
            }
            start = at_;
            isAllAscii = takeRun(ending) && isAllAscii;
        }
        value = {start, static_cast<size_t>(at_ - start)};
        ++at_;
        if (decodedAt_[count_] != LITERAL) {
            decoded_.append(value);
            value = std::string_view(decoded_).substr(decodedStart);
        }
        return isAllAscii || isXmlUtf8(value);
    }

    /// What was decoded has moved while it grew.
    void lendDecoded() {
        for (size_t i = 0; i < count_; ++i) {
            if (decodedAt_[i] != LITERAL) {
                attributes_[i].value = {decoded_.data() + decodedAt_[i],
                                        attributes_[i].value.size()};
            }
        }
    }

    /// Whether a block is text without anything special. Without a branch, so that it takes many
    /// bytes at once.
    static bool isPlainBlock(const char* block, unsigned char& all) {
        unsigned special = 0;
        for (size_t i = 0; i < BLOCK; ++i) {
            const auto byte = static_cast<unsigned char>(block[i]);
            special |= static_cast<unsigned>(byte < ' ' && byte != '\t' && byte != '\n') |
                       static_cast<unsigned>(byte == '<') | static_cast<unsigned>(byte == '>') |
                       static_cast<unsigned>(byte == '&') | static_cast<unsigned>(byte == 0x7F);
            all |= byte;
        }
        return special == 0;
    }

    /// As takeRun, of text, which may be long.
    bool takeTextRun() {
        unsigned char all = 0;
        unsigned char ofBlock = 0;
        while (end_ - at_ >= static_cast<std::ptrdiff_t>(BLOCK) && isPlainBlock(at_, ofBlock)) {
            all |= ofBlock;
            at_ += BLOCK;
        }
        return takeRun(ENDS_TEXT) && all < 0x80;
    }

    /// Goes to where a run ends; returns whether it is of ASCII.
    bool takeRun(uint8_t ending) {
        unsigned char all = 0;
        const char* at = at_;
        while ((RUN_ENDS[static_cast<unsigned char>(*at)] & ending) == 0) {
            all |= static_cast<unsigned char>(*at);
            ++at;
        }
        at_ = at;
        return all < 0x80;
    }

    /// Decodes a reference or white space that does not stay as it is.
    bool takeSpecial(bool inValue) {
        if (*at_ == '&') {
            return takeReference(at_, decoded_);
        }
        if (!isSpace(*at_) || (*at_ == '\r' && at_ + 1 == end_ && !isLast_)) {
            return false;
        }
        at_ += *at_ == '\r' && at_[1] == '\n' ? 2 : 1;
        decoded_ += inValue ? ' ' : '\n';
        return true;
    }

    bool takeText() {
        const char* start = at_;
        decoded_.clear();
        bool isAllAscii = takeTextRun();
        bool isDecoded = false;
        while (*at_ != '<' && at_ != end_) {
            if (*at_ == '>') {
                if (at_ - start >= 2 && at_[-1] == ']' && at_[-2] == ']') {
                    return false;
                }
                ++at_;
            } else {
                isDecoded = true;
                decoded_.append(start, at_);
                if (nameLengths_.empty() && *at_ == '&') {
                    return false;
                }
                if (!takeSpecial(false)) {
                    return false;
                }
                start = at_;
            }
            isAllAscii = takeTextRun() && isAllAscii;
        }
        if (at_ == end_ && !isLast_) {
            return false;
        }
        std::string_view text(start, static_cast<size_t>(at_ - start));
        if (isDecoded) {
            text = decoded_.append(text);
        }
        return (isAllAscii || isXmlUtf8(text)) && tellText(text);
    }

    bool tellText(std::string_view text) {
        if (!nameLengths_.empty()) {
            receiver_.text(text);
            return true;
        }
        return text.find_first_not_of(XML_SPACE) == std::string_view::npos;
    }

    /// Takes all up to a mark and behind it, with the line ends resolved.
    bool takeUpTo(std::string_view mark, std::string_view& content) {
        const std::string_view rest(at_, static_cast<size_t>(end_ - at_));
        const size_t length = rest.find(mark);
        if (length == std::string_view::npos) {
            at_ = end_;
            return false;
        }
        content = rest.substr(0, length);
        at_ += length + mark.size();
        if (content.find('\r') != std::string_view::npos) {
            content = withPlainLineEnds(content);
        }
        return isXmlUtf8(content);
    }

    std::string_view withPlainLineEnds(std::string_view text) {
        decoded_.clear();
        for (size_t i = 0; i < text.size(); ++i) {
            if (text[i] != '\r') {
                decoded_ += text[i];
            } else if (i + 1 == text.size() || text[i + 1] != '\n') {
                decoded_ += '\n';
            }
        }
        return decoded_;
    }

    bool takeSection() {
        std::string_view content;
        if (nameLengths_.empty() || !takeUpTo("]]>", content)) {
            return false;
        }
        receiver_.section(content);
        return true;
    }

    bool takeComment() {
        std::string_view content;
        if (!takeUpTo("--", content) || *at_ != '>') {
            return false;
        }
        ++at_;
        receiver_.comment(content);
        return true;
    }

    bool takeInstruction() {
        ++at_;
        const char* const start = at_;
        if (!takeNcName() || (!isSpace(*at_) && !startsWith("?>"))) {
            return false;
        }
        const std::string_view target(start, static_cast<size_t>(at_ - start));
        const bool hasData = skipSpace();
        std::string_view data;
        if (equalIgnoringCase(target, "xml") || target.size() > LONGEST_NAME ||
            !takeUpTo("?>", data)) {
            return false;
        }
        receiver_.instruction(target, hasData ? &data : nullptr);
        return true;
    }

    Receiver& receiver_;
    const char* at_ = nullptr;
    const char* end_ = nullptr;
    bool isLast_ = false;
    bool isStarted_ = false;
    bool isUnknown_ = false;
    bool isRefused_ = false;  // by the receiver
    bool rootSeen_ = false;
    std::string names_;  // of the open elements, one behind the other
    std::vector<uint32_t> nameLengths_;
    std::array<XmlTagAttribute, MOST_ATTRIBUTES> attributes_;
    std::array<uint32_t, MOST_ATTRIBUTES> decodedAt_{};  // where in decoded_ values begin
    size_t count_ = 0;
    uint64_t seen_ = 0;  // of the tag's attributes
    bool isPlain_ = true;
    std::string decoded_;
};

}  // namespace intake
