#include "workbench/probe/explore/xml_outline.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <memory>
#include <optional>

#include "formats/text/ascii.h"
#include "formats/text/byte_order_mark.h"
#include "formats/text/media_type.h"
#include "formats/text/trim.h"
#include "formats/xml/XmlScanner.h"
#include "formats/xml/libxml_setup.h"
#include "formats/xml/xml_load.h"
#include "formats/xml/xml_text.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/explore/XmlPrefixes.h"
#include "workbench/probe/explore/path_index.h"
#include "workbench/probe/explore/xml_entry.h"
#include "workbench/probe/xpath_text.h"

namespace probe {

namespace {

using Id = PathTree::Id;
using Kind = PathTree::Kind;

constexpr std::size_t longestPath = 511;  // bytes, of the parameter
constexpr std::size_t longestText = 65536;

/// Puts the elements and attributes of a document where their paths are. Names are as expressions
/// write them.
class PathEvents {
public:
    explicit PathEvents(PathSink& paths) : paths_(paths) {
        open_.push_back({PathTree::ROOT, 0, {}, false});
    }

    void startElement(std::string_view name) {
        Element& parent = open_.back();
        parent.hasElements = true;
        const Id node = paths_.child(parent.node, name, parent.hint);
        open_.push_back({node, 0, {}, false});
    }

    /// Of the element that began last.
    void attribute(std::string_view name, std::string_view value) {
        Element& element = open_.back();
        attributeName_.replace(1, std::string::npos, name);
        paths_.count(paths_.child(element.node, attributeName_, element.hint), Kind::Text, value);
    }

    void text(std::string_view text) {
        Element& element = open_.back();
        if (paths_.wantsText(element.node) && element.text.size() < longestText)
            element.text.append(text);
    }

    void endElement() {
        const Element& element = open_.back();
        const std::string_view text = intake::trimmed(element.text, intake::XML_SPACE);
        if (element.node != PathTree::NONE)
            paths_.count(element.node, element.hasElements ? Kind::Object : Kind::Text,
                         element.hasElements ? std::string_view{} : text);
        paths_.end(element.node);
        open_.pop_back();
    }

    bool hasEnough() const { return paths_.hasEnough(); }

private:
    struct Element {
        Id node;
        std::size_t hint;
        std::string text;
        bool hasElements;
    };

    PathSink& paths_;
    std::vector<Element> open_;
    std::string attributeName_ = "@";
};

/// What the quick scanner tells of a document whose elements are all in one namespace, or in none.
class PlainEvents final : public intake::XmlEvents {
public:
    /// `prefix` with its colon stands before the name of each element.
    PlainEvents(PathSink& paths, std::string prefix)
        : events_(paths), name_(std::move(prefix)), prefixLength_(name_.size()) {}

    void startDocument() override {}
    void startElement(std::string_view name, const intake::XmlAttributes& attributes) override {
        events_.startElement(name_.replace(prefixLength_, std::string::npos, name));
        for (const intake::XmlAttribute& each : attributes)
            events_.attribute(each.name, each.value);
    }
    bool endElement() override {
        events_.endElement();
        return !events_.hasEnough();
    }
    void text(std::string_view text) override { events_.text(text); }

private:
    PathEvents events_;
    std::string name_;
    const std::size_t prefixLength_;
};

/// The address that the root declares as the namespace of all names without a prefix; empty where
/// nothing is declared, and nothing where it takes a parser to tell.
std::optional<std::string_view> namespaceOf(std::string_view body) {
    constexpr std::string_view declaration = "xmlns";
    const auto at = body.find(declaration);
    if (at == std::string_view::npos) return "";
    if (body.find(declaration, at + 1) != std::string_view::npos) return std::nullopt;
    auto root = body.find('<');
    if (root < at && body.substr(root).starts_with("<?")) root = body.find('<', root + 1);
    const std::string_view before = body.substr(0, at).substr(std::min(root, at));
    const auto isEven = [&](char quote) {
        return std::count(before.begin(), before.end(), quote) % 2 == 0;
    };
    const bool isInRoot = before.ends_with(' ') && before.find('>') == std::string_view::npos &&
                          isEven('"') && isEven('\'');
    const std::string_view value = body.substr(at + declaration.size());
    if (!isInRoot || !(value.starts_with("=\"") || value.starts_with("='"))) return std::nullopt;
    const std::string_view address = value.substr(2, value.find(value[1], 2) - 2);
    const bool isPlain = std::all_of(address.begin(), address.end(), [](char c) {
        return c > ' ' && intake::isAscii(c) && c != '&' && c != '<';
    });
    const bool isReserved = address.starts_with("http://www.w3.org/");
    return address.empty() || !isPlain || isReserved ? std::nullopt : std::optional(address);
}

/// Whether a name with a prefix may stand in a tag; the quick scanner does not tell of each.
bool mayHavePrefixes(std::string_view body) {
    constexpr std::string_view ends = "=<>/\"' \t\r\n";
    constexpr std::size_t longest = 1000;  // of a name
    for (auto at = body.find(':'); at != std::string_view::npos; at = body.find(':', at + 1)) {
        const auto from = at - std::min(at, longest);
        const auto before = body.substr(from, at - from).find_last_of(ends);
        const auto behind = body.substr(at + 1, longest).find_first_of(ends);
        const bool isWhole = before != std::string_view::npos && behind != std::string_view::npos;
        if (!isWhole || body[from + before] == '<' || body[at + 1 + behind] == '=') return true;
    }
    return false;
}

/// Reads a document that is as plain as programs mostly write it, several times as fast as a parser
/// can. False when it is not; what was told is of no use then.
bool scan(const Fetched& source, XmlPrefixes& prefixes, PathSink& paths) {
    const auto space = namespaceOf(source.body);
    const std::string charset = intake::charsetOf(source.contentType);
    const bool isUtf8 = charset.empty() || intake::equalIgnoringCase(charset, "utf-8");
    if (!space || !isUtf8 || mayHavePrefixes(source.body)) return false;
    PlainEvents events(paths, prefixes.nameFor("", "", *space));
    intake::XmlScanner<PlainEvents> scanner(events);
    const auto outcome = scanner.scan(source.body);
    if (outcome == intake::XmlScanner<PlainEvents>::Outcome::ENOUGH) return true;
    return outcome == intake::XmlScanner<PlainEvents>::Outcome::SCANNED && scanner.isComplete();
}

/// What libxml2 tells of a document.
struct ParsedEvents {
    ParsedEvents(PathSink& paths, XmlPrefixes& known) : events(paths), prefixes(known) {}

    std::string_view nameOf(const xmlChar* local, const xmlChar* prefix, const xmlChar* uri) {
        if (uri == nullptr) return intake::viewOf(local);
        return name = prefixes.nameFor(intake::viewOf(local), intake::viewOf(prefix),
                                       intake::viewOf(uri));
    }

    PathEvents events;
    XmlPrefixes& prefixes;
    std::string name;
};

ParsedEvents& eventsOf(void* context) {
    return *static_cast<ParsedEvents*>(static_cast<xmlParserCtxt*>(context)->_private);
}

void onElement(void* context, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int,
               const xmlChar**, int count, int, const xmlChar** attributes) {
    ParsedEvents& parsed = eventsOf(context);
    parsed.events.startElement(parsed.nameOf(local, prefix, uri));
    constexpr int parts = 5;  // name, prefix, namespace, where the value begins, where it ends
    for (const xmlChar** each = attributes; each != attributes + count * parts; each += parts) {
        const auto* const begin = reinterpret_cast<const char*>(each[3]);
        const auto length = static_cast<std::size_t>(each[4] - each[3]);
        parsed.events.attribute(parsed.nameOf(each[0], each[1], each[2]), {begin, length});
    }
}

/// A DTD is refused, as the plugin does.
void onSubset(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    xmlStopParser(static_cast<xmlParserCtxt*>(context));
}

xmlSAXHandler handlers() {
    xmlSAXHandler sax{};
    sax.initialized = XML_SAX2_MAGIC;
    sax.startElementNs = onElement;
    sax.endElementNs = [](void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
        eventsOf(context).events.endElement();
    };
    sax.characters = [](void* context, const xmlChar* text, int length) {
        eventsOf(context).events.text(
            {reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
    };
    sax.cdataBlock = sax.characters;
    sax.internalSubset = onSubset;
    return sax;
}

struct ParserDeleter {
    void operator()(xmlParserCtxt* parser) const { xmlFreeParserCtxt(parser); }
};

/// What the plugin's own parser says against a document; empty when it loads.
std::string faultOf(const Fetched& source) {
    const intake::EndMark never;
    const auto loaded = intake::loadXml(intake::TextSource(source.body), never,
                                        intake::charsetOf(source.contentType));
    return std::string(intake::trimmed(loaded.reason, intake::XML_SPACE));
}

[[noreturn]] void refuse(const std::string& fault) {
    throw LookFailure("is no XML that can be read: " + fault);
}

/// Zeros at the end of a document do no harm, but those that are half of a character, which some
/// encodings have there, belong to it.
std::size_t sizeWithoutZeros(const std::string& body) {
    const std::size_t size = body.find_last_not_of('\0') + 1;
    const bool isWide = body.substr(0, 4).find('\0') != std::string::npos;
    return isWide ? body.size() : size;
}

void parse(const Fetched& source, ParsedEvents& events) {
    intake::setUpLibxml();
    xmlSAXHandler sax = handlers();
    const std::unique_ptr<xmlParserCtxt, ParserDeleter> parser(
        xmlCreatePushParserCtxt(&sax, nullptr, nullptr, 0, nullptr));
    if (parser == nullptr) throw std::bad_alloc();
    parser->_private = &events;
    // Character references in attributes are decoded too; with DTDs refused there are no entities.
    xmlCtxtUseOptions(parser.get(), XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOENT);
    const std::string charset = intake::charsetOf(source.contentType);
    const bool hasMark = intake::byteOrderMarkOf(source.body).encoding != nullptr;
    if (!charset.empty() && !hasMark) {
        xmlCharEncodingHandler* const handler = xmlFindCharEncodingHandler(charset.c_str());
        if (handler != nullptr) xmlSwitchToEncoding(parser.get(), handler);
    }
    constexpr std::size_t piece = 1 << 20;
    const std::size_t size = sizeWithoutZeros(source.body);
    for (std::size_t at = 0; at < size; at += piece) {
        const std::size_t length = std::min(piece, size - at);
        xmlParseChunk(parser.get(), source.body.data() + at, static_cast<int>(length), 0);
        if (events.events.hasEnough()) return;
        if (parser->wellFormed == 0 || parser->disableSAX != 0) refuse(faultOf(source));
    }
    xmlParseChunk(parser.get(), "", 0, 1);
    if (parser->wellFormed == 0) refuse(faultOf(source));
    // Some faults of namespaces are advice only, such as an address of an unusual form.
    const std::string fault = parser->nsWellFormed == 0 ? faultOf(source) : "";
    if (!fault.empty()) refuse(fault);
}

std::string pathTo(const PathTree& tree, Id node) {
    std::string path;
    for (Id each = node; each != PathTree::ROOT; each = tree.at(each).parent)
        path = "/" + tree.at(each).name + path;
    return path;
}

std::vector<std::string> namesIn(const std::string& place) {
    std::vector<std::string> names;
    for (std::size_t start = 0; start < place.size();) {
        const std::size_t slash = std::min(place.find('/', start), place.size());
        if (slash > start) names.push_back(place.substr(start, slash - start));
        start = slash + 1;
    }
    return names;
}

OutlineEntry entryFor(const PathTree& tree, const XmlPrefixes& prefixes, Id node) {
    const PathTree::Node& found = tree.at(node);
    const std::string path = pathTo(tree, node);
    const bool isAttribute = found.name.starts_with('@');
    const bool hasElements = (found.kinds >> static_cast<unsigned>(Kind::Object) & 1) != 0;
    OutlineEntry entry{0,
                       found.name,
                       isAttribute   ? "attributes"
                       : hasElements ? "elements"
                                     : "texts",
                       found.records,
                       found.match.empty() ? found.value : found.match,
                       found.children.empty() ? "" : path,
                       {}};
    const std::string declarations = prefixes.declarationsFor(path);
    if (path.size() > longestPath || declarations.size() > longestPath) return entry;
    if (!declarations.empty()) entry.settings.emplace_back("namespaces", declarations);
    entry.settings.emplace_back("xpath", path);
    return entry;
}

}  // namespace

Outline xmlOutline(const Fetched& source, const OutlineWish& wish) {
    if (isXmlEntry(wish.place)) return xmlEntryOutline(source, wish);
    const std::vector<std::string> place = namesIn(wish.place);
    XmlPrefixes prefixes;
    bool isPlain = true;
    const PathReader read = [&](PathSink& paths) {
        const bool wasPlain = isPlain;
        if (isPlain) isPlain = scan(source, prefixes, paths);
        if (wasPlain) return isPlain;
        ParsedEvents events(paths, prefixes);
        parse(source, events);
        return true;
    };
    const auto tree = pathIndex(source.body.size(), wish, place, read);
    const Id from = placeIn(*tree, wish, place);
    Outline outline =
        outlineOf(*tree, from, wish, [&](Id node) { return entryFor(*tree, prefixes, node); });
    if (wantsPreview(wish)) {
        PathPreview preview(place, columnsOf(outline));
        read(preview);
        outline.preview = previewOf(preview, *tree, from, [&](std::size_t row) {
            return wish.place + "[" + std::to_string(row + 1) + "]";
        });
    }
    return outline;
}

}  // namespace probe
