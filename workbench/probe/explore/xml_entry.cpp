#include "workbench/probe/explore/xml_entry.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <utility>

#include "formats/text/media_type.h"
#include "formats/text/trim.h"
#include "formats/xml/libxml_setup.h"
#include "formats/xml/xml_load.h"
#include "formats/xml/xml_text.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/explain/XmlQueries.h"
#include "workbench/probe/explore/OutlinePage.h"
#include "workbench/probe/explore/PathTree.h"
#include "workbench/probe/explore/Wanted.h"
#include "workbench/probe/explore/XmlPrefixes.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

constexpr std::size_t longestText = 511;  // bytes, of the parameters
constexpr std::size_t mostWheres = 20;    // for each of which all elements are looked at

using Nodes = std::vector<xmlNode*>;

std::string nameOf(const xmlNode* node, XmlPrefixes& prefixes) {
    if (node->ns == nullptr) return std::string(intake::viewOf(node->name));
    return prefixes.nameFor(intake::viewOf(node->name), intake::viewOf(node->ns->prefix),
                            intake::viewOf(node->ns->href));
}

void meet(const xmlNode* node, XmlPrefixes& prefixes) {
    if (node->ns != nullptr) nameOf(node, prefixes);
}

/// Gives each namespace its prefix in the order in which the outline of the whole document does.
void meetNames(xmlDoc* document, XmlPrefixes& prefixes) {
    xmlNode* node = xmlDocGetRootElement(document);
    while (node != nullptr) {
        if (node->type == XML_ELEMENT_NODE) {
            meet(node, prefixes);
            for (const xmlAttr* each = node->properties; each != nullptr; each = each->next)
                meet(reinterpret_cast<const xmlNode*>(each), prefixes);
        }
        const bool goesDown = node->type == XML_ELEMENT_NODE && node->children != nullptr;
        xmlNode* next = goesDown ? node->children : node->next;
        while (next == nullptr && node->parent != nullptr) {
            node = node->parent;
            next = node->next;
        }
        node = next;
    }
}

bool hasElements(const xmlNode* node) {
    return node->type == XML_ELEMENT_NODE && xmlFirstElementChild(const_cast<xmlNode*>(node));
}

std::string valueOf(xmlNode* node) {
    const std::unique_ptr<xmlChar, void (*)(xmlChar*)> text(
        xmlNodeGetContent(node), [](xmlChar* content) { xmlFree(content); });
    return std::string(intake::viewOf(text.get()));
}

/// A text as an expression writes it; empty for one that it cannot.
std::string literal(const std::string& text) {
    if (text.find('\'') == std::string::npos) return "'" + text + "'";
    return text.find('"') == std::string::npos ? '"' + text + '"' : "";
}

class XmlEntry {
public:
    XmlEntry(xmlDoc* document, const OutlineWish& wish) : document_(document), wish_(wish) {
        meetNames(document, prefixes_);
    }

    Outline make() {
        const Nodes here = ask(wish_.place);
        if (here.empty()) throw LookFailure("has nothing at " + quoted(wish_.place));
        const Wanted wanted(wish_.find);
        OutlinePage page(wish_);
        OutlineEntry entry = entryOf(wish_.place, wish_.place, here);
        entry.place.clear();
        if (wanted.isIn(entry.name)) page.add(std::move(entry));
        for (const auto& [name, found] : membersOf(here)) {
            OutlineEntry member = entryOf(name, wish_.place + "/" + name, found);
            member.depth = 1;
            if (!wanted.isIn(name) && !wanted.isIn(member.value)) continue;
            if (page.wantsNext() && found.size() == 1) addWhere(found.front(), member);
            page.add(std::move(member));
        }
        return page.take();
    }

private:
    Nodes ask(const std::string& path) const {
        return XmlQueries(document_, prefixes_.declarationsFor(path)).ask(path).nodes;
    }

    Proposal settingsFor(const std::string& path) const {
        const std::string declarations = prefixes_.declarationsFor(path);
        if (path.size() > longestText || declarations.size() > longestText) return {};
        Proposal settings;
        if (!declarations.empty()) settings.emplace_back("namespaces", declarations);
        settings.emplace_back("xpath", path);
        return settings;
    }

    OutlineEntry entryOf(const std::string& name, const std::string& path,
                         const Nodes& found) const {
        OutlineEntry entry;
        entry.name = name;
        entry.records = found.size();
        const bool isParent = std::any_of(found.begin(), found.end(), hasElements);
        const bool hasAttributes = std::any_of(found.begin(), found.end(), [](xmlNode* node) {
            return node->type == XML_ELEMENT_NODE && node->properties != nullptr;
        });
        entry.kind = name.starts_with('@') ? "attributes" : isParent ? "elements" : "texts";
        if (!isParent) {
            const std::string text = valueOf(found.front());
            entry.value = startOf(intake::trimmed(text, intake::XML_SPACE));
        }
        if (isParent || hasAttributes) entry.place = path;
        entry.settings = settingsFor(path);
        return entry;
    }

    using Members = std::vector<std::pair<std::string, Nodes>>;

    /// The attributes and elements of each name.
    Members membersOf(const Nodes& nodes) {
        Members members;
        std::unordered_map<std::string, std::size_t> places;
        const auto add = [&](const std::string& name, xmlNode* node) {
            const auto [known, isNew] = places.emplace(name, members.size());
            if (isNew) members.emplace_back(name, Nodes{});
            members[known->second].second.push_back(node);
        };
        for (const xmlNode* node : nodes) {
            if (node->type != XML_ELEMENT_NODE) continue;
            for (xmlAttr* each = node->properties; each != nullptr; each = each->next) {
                auto* const attribute = reinterpret_cast<xmlNode*>(each);
                add("@" + nameOf(attribute, prefixes_), attribute);
            }
            for (xmlNode* each = node->children; each != nullptr; each = each->next) {
                if (each->type == XML_ELEMENT_NODE) add(nameOf(each, prefixes_), each);
            }
        }
        return members;
    }

    /// The path of all elements that have the value that this one has.
    void addWhere(xmlNode* node, OutlineEntry& member) {
        const std::string text = hasElements(node) ? "" : literal(valueOf(node));
        const auto bracket = wish_.place.rfind('[');
        const bool isEntry = wish_.place.ends_with(']');
        if (!isEntry || text.empty() || ++wheres_ > mostWheres) return;
        const std::string path =
            wish_.place.substr(0, bracket) + "[" + member.name + "=" + text + "]";
        const Nodes found = ask(path);
        const bool isFound = std::find(found.begin(), found.end(), node->parent) != found.end();
        const Proposal settings = settingsFor(path);
        if (isFound && !settings.empty()) member.where = Choice{settings, found.size()};
    }

    xmlDoc* document_;
    const OutlineWish& wish_;
    XmlPrefixes prefixes_;
    std::size_t wheres_ = 0;
};

}  // namespace

bool isXmlEntry(const std::string& place) {
    return place.find('[') != std::string::npos;
}

Outline xmlEntryOutline(const Fetched& source, const OutlineWish& wish) {
    intake::setUpLibxml();
    const intake::EndMark never;
    const auto loaded = intake::loadXml(intake::TextSource(source.body), never,
                                        intake::charsetOf(source.contentType));
    if (loaded.document == nullptr) {
        throw LookFailure("is no XML that can be read: " +
                          std::string(intake::trimmed(loaded.reason, intake::XML_SPACE)));
    }
    return XmlEntry(loaded.document.get(), wish).make();
}

}  // namespace probe
