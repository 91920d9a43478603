#include "workbench/probe/explain/xml_look.h"

#include <algorithm>

#include "formats/text/media_type.h"
#include "formats/text/trim.h"
#include "formats/xml/libxml_setup.h"
#include "formats/xml/xml_text.h"
#include "workbench/probe/explain/KeyTally.h"
#include "workbench/probe/explain/RowRange.h"
#include "workbench/probe/explain/ScriptCheck.h"
#include "workbench/probe/explain/XmlQueries.h"
#include "workbench/probe/explain/XmlStop.h"
#include "workbench/probe/explain/settings_check.h"
#include "workbench/probe/explain/text_end.h"
#include "workbench/probe/fetch/source_start.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using Nodes = std::vector<xmlNode*>;

std::string textOf(const xmlNode* node) {
    std::string text;
    intake::appendNodeText(node, text);
    return text;
}

std::string nameOfNode(const xmlNode* node) {
    std::string name;
    intake::appendNodeName(node, name);
    return name;
}

class XmlLook {
public:
    XmlLook(const Settings& settings, xmlDoc* document, Ladder& ladder)
        : settings_(settings),
          document_(document),
          ladder_(ladder),
          queries_(document, settings.namespaces) {}

    void look() {
        if (!queries_.knowsDeclarations())
            return ladder_.fail(
                Stage::Selection, settings_.namespaces,
                "\"Namespaces\" (namespaces) is not a sequence of declarations such "
                "as xmlns:a=\"http://example.com/a\".",
                "Write it so, with blanks between several.");
        XmlQueries::Answer answer = queries_.ask(settings_.xpath);
        if (answer.declarations > 0)  // what is written of them is not looked at
            return ladder_.ok(Stage::Selection,
                              settings_.xpath + ": " +
                                  counted(answer.nodes.size() + answer.declarations, "node"));
        const LocationPath path = locationPath(settings_.xpath);
        if (answer.nodes.empty() && !path.steps.empty() &&
            (answer.fault.empty() || !answer.unknownPrefix.empty()))
            return tellStop(path);
        if (!answer.fault.empty()) return tellFault(answer.fault);
        if (answer.nodes.empty())
            return ladder_.fail(Stage::Selection, settings_.xpath, "It finds nothing.",
                                "Set \"XPath\" (xpath) to an expression that finds the records.");
        ladder_.ok(Stage::Selection, settings_.xpath + ": " + counted(answer.nodes.size(), "node"));
        nodes_ = std::move(answer.nodes);
        takeRows();
        checkKey();
        checkScript();
    }

private:
    void tellStop(const LocationPath& path) {
        XmlStop stop(document_, settings_.namespaces, path);
        ladder_.add(Stage::Selection, stop.step());
        if (const auto remedy = stop.remedy()) ladder_.propose(Stage::Selection, *remedy);
        proposeRows();
    }

    void tellFault(const std::string& fault) {
        const bool isEmpty = settings_.xpath.empty();
        ladder_.fail(Stage::Selection, settings_.xpath,
                     isEmpty
                         ? "\"XPath\" (xpath) is empty: nothing says which nodes are the records."
                         : "The expression cannot be asked: " + fault + ".",
                     "Set \"XPath\" (xpath) to an expression that finds the records.");
        proposeRows();
    }

    /// The elements that repeat most are probably the records.
    void proposeRows() {
        const xmlNode* const root = xmlDocGetRootElement(document_);
        if (root == nullptr || root->ns != nullptr) return;
        std::vector<std::pair<std::size_t, std::string>> repeated;
        findRepeated(root, "/" + nameOfNode(root), 0, repeated);
        std::stable_sort(repeated.begin(), repeated.end(),
                         [](const auto& a, const auto& b) { return a.first > b.first; });
        repeated.resize(std::min(repeated.size(), mostProposals));
        for (const auto& [count, path] : repeated)
            ladder_.propose(Stage::Selection, {{"xpath", path}});
    }

    static void findRepeated(const xmlNode* parent, const std::string& path, int depth,
                             std::vector<std::pair<std::size_t, std::string>>& found) {
        constexpr int deepest = 6;
        constexpr std::size_t most = 100;
        std::vector<std::pair<std::size_t, const xmlNode*>> kinds;  // the first of each name
        for (const xmlNode* each = parent->children; each != nullptr; each = each->next) {
            if (each->type != XML_ELEMENT_NODE || each->ns != nullptr) continue;
            const auto known = std::find_if(kinds.begin(), kinds.end(), [&](const auto& kind) {
                return intake::viewOf(kind.second->name) == intake::viewOf(each->name);
            });
            if (known != kinds.end()) {
                ++known->first;
            } else if (kinds.size() < most) {
                kinds.emplace_back(1, each);
            }
        }
        for (const auto& [count, node] : kinds) {
            const std::string below = path + "/" + nameOfNode(node);
            if (count > 1 && found.size() < most) found.emplace_back(count, below);
            if (count == 1 && depth < deepest) findRepeated(node, below, depth + 1, found);
        }
    }

    void takeRows() {
        checkRows(settings_, nodes_.size(), "record", ladder_);
        nodes_ = loadedOf(nodes_, rowRangeOf(settings_));
        ladder_.records = nodes_.size();
    }

    void checkKey() {
        if (settings_.mode == TargetMode::DataStructure && !settings_.table.empty())
            return tellOneStructure(nodes_.size(), ladder_);
        if (!needsKey(settings_)) return ladder_.ok(Stage::Key, "none is needed");
        if (nodes_.empty()) return;
        KeyTally tally(settings_.key, "child or attribute");
        for (xmlNode* node : nodes_) {
            const XmlQueries::Answer answer = queries_.ask(settings_.key, node);
            if (!answer.fault.empty()) return tellKeyFault(answer.fault);
            keys_.push_back(answer.nodes.empty() ? std::nullopt
                                                 : std::optional(textOf(answer.nodes.front())));
            tally.add(keys_.back());
        }
        ladder_.records = tally.entries();
        if (tally.missing() == nodes_.size()) return tellKeyMissing();
        tally.tell(ladder_);
        if (ladder_.at(Stage::Key).state == State::Warning) proposeKeys();
    }

    void tellKeyFault(const std::string& fault) {
        ladder_.fail(Stage::Key, settings_.key, "The expression cannot be asked: " + fault + ".",
                     "Set \"Key\" (key) to the name of a child, or to @ and that of an attribute.");
        ladder_.records = 0;
        proposeKeys();
    }

    std::vector<std::string> keyNames() const {
        std::vector<std::string> names;
        for (const std::string& name : namesIn(nodes_, true))
            names.push_back("@" + name);
        for (const std::string& name : namesIn(nodes_, false))
            names.push_back(name);
        return names;
    }

    void tellKeyMissing() {
        const std::vector<std::string> there = keyNames();
        ladder_.fail(Stage::Key, settings_.key,
                     "The key selects nothing in any of the " + counted(nodes_.size(), "record") +
                         ", so all are left out. They have: " + listOf(there) + ".",
                     "Set \"Key\" (key) to one of these.");
        const std::string near = nearName(settings_.key, there);
        if (!near.empty()) ladder_.propose(Stage::Key, {{"key", near}});
        if (std::find(there.begin(), there.end(), "@" + settings_.key) != there.end())
            ladder_.propose(Stage::Key, {{"key", "@" + settings_.key}});
        proposeKeys();
    }

    /// By the first records alone: what is proposed is loaded before it is shown.
    void proposeKeys() {
        constexpr std::size_t mostNames = 20;
        constexpr std::size_t mostRecords = 1000;
        const std::size_t records = std::min(nodes_.size(), mostRecords);
        std::vector<std::string> names = keyNames();
        names.resize(std::min(names.size(), mostNames));
        std::size_t proposed = 0;
        for (const std::string& name : names) {
            KeyTally tally(name, "key");
            for (std::size_t i = 0; i < records; ++i) {
                const XmlQueries::Answer answer = queries_.ask(name, nodes_[i]);
                if (answer.nodes.empty()) break;
                tally.add(textOf(answer.nodes.front()));
            }
            const bool isUnique = tally.entries() == records;
            if (isUnique && proposed++ < mostProposals)
                ladder_.propose(Stage::Key, {{"key", name}});
        }
        ladder_.propose(Stage::Key, {{"mode", "DataArray"}});
    }

    void checkScript() {
        if (settings_.mode == TargetMode::SharedMemory) return ladder_.ok(Stage::Script, "");
        if (ladder_.at(Stage::Key).state == State::Failed) return;
        const bool isArray = settings_.mode == TargetMode::FieldArray;
        ScriptCheck check(settings_);
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            const xmlNode* const node = nodes_[i];
            if (isArray) {
                check.value("", valueOf(node));
                continue;
            }
            if (!keys_.empty() && !keys_[i]) continue;
            if (!keys_.empty()) check.key(*keys_[i]);
            std::vector<std::string> elements;
            for (const xmlNode* each = node->children; each != nullptr; each = each->next) {
                const std::string name = nameOfNode(each);
                check.name(name);
                check.value(name, valueOf(each));
                if (each->type == XML_ELEMENT_NODE) elements.push_back(name);
            }
            check.record({elements.begin(), elements.end()});
        }
        check.tell(ladder_);
    }

    /// Markup is checked by the store alone.
    std::string valueOf(const xmlNode* node) const {
        return settings_.outputFormat == 0 ? textOf(node) : "";
    }

    const Settings& settings_;
    xmlDoc* document_;
    Ladder& ladder_;
    XmlQueries queries_;
    Nodes nodes_;
    std::vector<std::optional<std::string>> keys_;
};

intake::LoadedXml loadedFrom(const Fetched& source) {
    intake::setUpLibxml();
    const intake::EndMark never;
    return intake::loadXml(intake::TextSource(source.body), never,
                           intake::charsetOf(source.contentType));
}

/// What goes wrong at the end of a text, within a tag or with elements open, does so for want of
/// more. `reason` ends with the place in brackets.
bool isCutOff(std::string_view body, std::string_view reason) {
    const auto bracket = reason.rfind('(') + 1;
    const bool isAtEnd = namesEnd(reason.substr(bracket, reason.rfind(')') - bracket), body);
    const bool hasTag = intake::trimmedEnd(body, intake::XML_SPACE).ends_with('>');
    return isAtEnd && (!hasTag || reason.starts_with("Premature end"));
}

void tellUnreadable(std::string_view body, const std::string& reason, bool isRemote,
                    Ladder& ladder) {
    const bool isCut = isCutOff(body, reason);
    ladder.fail(
        Stage::Format, "XML that is not whole or not right",
        asSentence(reason) + (isCut ? " The text ends there: it is cut off." : "") +
            (isRemote ? " Over the network the plugin says nothing of this; it loads no records."
                      : ""),
        isCut ? "Fetch it again, or ask whoever writes it." : "Have the source mended.");
}

}  // namespace

bool isXml(const Fetched& source) {
    return loadedFrom(source).document != nullptr;
}

void lookAtXml(const Settings& settings, const Fetched& source, Ladder& ladder) {
    const intake::LoadedXml loaded = loadedFrom(source);
    if (loaded.document == nullptr)
        return tellUnreadable(source.body, loaded.reason, isUrl(settings.filename), ladder);
    ladder.ok(Stage::Format, "XML");
    constexpr int32_t payload = 1;
    // The conversion is the plugin's own: what it makes of the document is not looked at.
    if (settings.inputFormat == payload && isUrl(settings.filename)) return;
    XmlLook(settings, loaded.document.get(), ladder).look();
}

}  // namespace probe
