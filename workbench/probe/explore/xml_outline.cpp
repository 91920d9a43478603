#include "workbench/probe/explore/xml_outline.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

#include "formats/text/ascii.h"
#include "formats/text/byte_order_mark.h"
#include "formats/text/media_type.h"
#include "formats/text/trim.h"
#include "formats/xml/XmlScanner.h"
#include "formats/xml/libxml_setup.h"
#include "formats/xml/xml_load.h"
#include "formats/xml/xml_text.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/explore/path_index.h"
#include "workbench/probe/xpath_text.h"

namespace probe {

namespace {

using Id = PathTree::Id;
using Kind = PathTree::Kind;

constexpr std::size_t longestPath = 511;  // bytes, of the parameter
constexpr std::size_t longestText = 65536;

/// The prefixes that stand for namespaces in expressions, one for each.
class Prefixes {
public:
    /// The name as an expression has to write it. `own` is the prefix that the document uses.
    std::string nameFor(std::string_view local, std::string_view own, std::string_view uri) {
        if (uri.empty()) return std::string(local);
        const auto known = byUri_.find(uri);
        if (known != byUri_.end()) return known->second + ":" + std::string(local);
        const std::string wanted(own.empty() ? "d" : own);
        std::string prefix = wanted;
        for (int number = 2; !taken_.insert(prefix).second; ++number)
            prefix = wanted + std::to_string(number);
        byUri_.emplace(uri, prefix);
        return prefix + ":" + std::string(local);
    }

    /// The declarations of those that a path uses.
    std::string declarationsFor(const std::string& path) const {
        std::string declarations;
        for (const auto& [uri, prefix] : byUri_) {
            const bool isUsed = path.find("/" + prefix + ":") != std::string::npos ||
                                path.find("@" + prefix + ":") != std::string::npos;
            if (isUsed && prefix != xmlPrefix)
                declarations += (declarations.empty() ? "" : " ") + declarationOf(prefix, uri);
        }
        return declarations;
    }

private:
    static constexpr const char* xmlPrefix = "xml";  // that is known everywhere

    std::map<std::string, std::string, std::less<>> byUri_{
        {reinterpret_cast<const char*>(XML_XML_NAMESPACE), xmlPrefix}};
    std::set<std::string> taken_{xmlPrefix};
};

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
        open_.pop_back();
    }

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

/// What the quick scanner tells of a document without namespaces.
class PlainEvents final : public intake::XmlEvents {
public:
    explicit PlainEvents(PathSink& paths) : events_(paths) {}

    void startDocument() override {}
    void startElement(std::string_view name, const intake::XmlAttributes& attributes) override {
        events_.startElement(name);
        for (const intake::XmlAttribute& each : attributes)
            events_.attribute(each.name, each.value);
    }
    bool endElement() override {
        events_.endElement();
        return true;
    }
    void text(std::string_view text) override { events_.text(text); }

private:
    PathEvents events_;
};

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
bool scan(const Fetched& source, PathSink& paths) {
    const bool hasNamespaces =
        source.body.find("xmlns") != std::string::npos || mayHavePrefixes(source.body);
    const std::string charset = intake::charsetOf(source.contentType);
    const bool isUtf8 = charset.empty() || intake::equalIgnoringCase(charset, "utf-8");
    if (hasNamespaces || !isUtf8) return false;
    PlainEvents events(paths);
    intake::XmlScanner<PlainEvents> scanner(events);
    return scanner.scan(source.body) == intake::XmlScanner<PlainEvents>::Outcome::SCANNED &&
           scanner.isComplete();
}

/// What libxml2 tells of a document.
struct ParsedEvents {
    ParsedEvents(PathSink& paths, Prefixes& known) : events(paths), prefixes(known) {}

    std::string_view nameOf(const xmlChar* local, const xmlChar* prefix, const xmlChar* uri) {
        if (uri == nullptr) return intake::viewOf(local);
        return name = prefixes.nameFor(intake::viewOf(local), intake::viewOf(prefix),
                                       intake::viewOf(uri));
    }

    PathEvents events;
    Prefixes& prefixes;
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
    for (std::size_t at = 0; at < source.body.size(); at += piece) {
        const std::size_t length = std::min(piece, source.body.size() - at);
        xmlParseChunk(parser.get(), source.body.data() + at, static_cast<int>(length), 0);
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

OutlineEntry entryFor(const PathTree& tree, const Prefixes& prefixes, Id node, Id from) {
    const PathTree::Node& found = tree.at(node);
    const std::string path = pathTo(tree, node);
    const bool isAttribute = found.name.starts_with('@');
    const bool hasElements = (found.kinds >> static_cast<unsigned>(Kind::Object) & 1) != 0;
    OutlineEntry entry{tree.depthBelow(node, from),
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
    const std::vector<std::string> place = namesIn(wish.place);
    Prefixes prefixes;
    bool isPlain = true;
    const auto tree = pathIndex(source.body.size(), wish, place, [&](PathSink& paths) {
        const bool wasPlain = isPlain;
        if (isPlain) isPlain = scan(source, paths);
        if (wasPlain) return isPlain;
        ParsedEvents events(paths, prefixes);
        parse(source, events);
        return true;
    });
    Outline outline;
    outline.notKept = tree->dropped();
    const Id from = placeIn(*tree, wish, place);
    for (const Id node : tree->shown(from, wish, outline.leftOut)) {
        outline.entries.push_back(entryFor(*tree, prefixes, node, from));
        // What is found stands apart from what it stands in.
        if (!wish.find.empty()) outline.entries.back().depth = 0;
    }
    return outline;
}

}  // namespace probe
