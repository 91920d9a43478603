#include "workbench/probe/explain/XmlStop.h"

#include <algorithm>

#include "formats/xml/xml_text.h"
#include "workbench/probe/NameList.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::viewOf;
using Nodes = std::vector<xmlNode*>;

/// The address of a namespace: the library leaves a reference where an ampersand stands.
std::string addressOf(const xmlNs* space) {
    constexpr std::string_view reference = "&#38;";
    std::string address(viewOf(space->href));
    for (auto at = address.find(reference); at != std::string::npos;
         at = address.find(reference, at + 1))
        address.replace(at, reference.size(), "&");
    return address;
}

std::string localOf(const std::string& name) {
    return name.substr(name.find(':') + 1);
}

/// What may bear a name below a node: its attributes, or its children.
const xmlNode* firstBelow(const xmlNode* node, bool attribute) {
    const bool isElement = node->type == XML_ELEMENT_NODE;
    if (attribute) return isElement ? reinterpret_cast<const xmlNode*>(node->properties) : nullptr;
    return isElement || node->type == XML_DOCUMENT_NODE ? node->children : nullptr;
}

bool isNamed(const xmlNode* node) {
    return node->type == XML_ELEMENT_NODE || node->type == XML_ATTRIBUTE_NODE;
}

const xmlNode* findNamed(const xmlNode* parent, const std::string& local, bool attribute) {
    const xmlNode* node = firstBelow(parent, attribute);
    while (node != nullptr && !(isNamed(node) && viewOf(node->name) == local))
        node = node->next;
    return node;
}

/// A predicate that compares one child or attribute with a literal: what it compares.
std::string comparedIn(const std::string& predicates) {
    const auto equals = predicates.find('=');
    const bool isOne = predicates.find('[', 1) == std::string::npos;
    if (!isOne || equals == std::string::npos) return "";
    std::string compared = predicates.substr(1, equals - 1);
    compared.erase(compared.find_last_not_of(" \t") + 1);
    const bool isName = compared.find_first_of("()[]<>!+*/ ") == std::string::npos;
    return isName ? compared : "";
}

}  // namespace

std::vector<std::string> namesIn(const Nodes& nodes, bool attributes) {
    NameList list;
    std::string name;
    for (const xmlNode* node : nodes) {
        for (const xmlNode* each = firstBelow(node, attributes); each != nullptr;
             each = each->next) {
            if (!isNamed(each)) continue;
            name.clear();
            intake::appendNodeName(each, name);
            list.add(name);
        }
    }
    return list.names();
}

XmlStop::XmlStop(xmlDoc* document, const std::string& namespaces, LocationPath path)
    : document_(document),
      namespaces_(namespaces),
      queries_(document, namespaces),
      path_(std::move(path)) {
    findStop();
}

void XmlStop::findStop() {
    stop_ = 0;
    while (stop_ + 1 < path_.steps.size() && !queries_.ask(path_.text(stop_ + 1)).nodes.empty())
        ++stop_;
}

/// Where a step looks: what the steps before it find, and all below when it looks at any depth.
Nodes XmlStop::parents(const LocationPath& path, std::size_t step) {
    std::string before = path.text(step);
    if (before.empty()) before = "/";
    if (!path.steps[step].anyDepth) return queries_.ask(before).nodes;
    return queries_.ask(before == "/" ? "//." : before + "//.").nodes;
}

Step XmlStop::step() {
    Step step;
    step.state = State::Failed;
    step.seen = path_.text();
    step.place = path_.steps[stop_].text();
    step.placeOffset = path_.text(stop_ + 1).size() - step.place.size();
    LocationPath tested = stoppedPath();
    const XmlQueries::Answer all = queries_.ask(tested.text());
    if (all.unknownPrefix.empty()) {
        step.cause = causeOfNames(std::move(tested), all.nodes);
        step.next = "Set \"XPath\" (xpath) to names that are there.";
    } else {
        step.cause = "Nothing says what the prefix \"" + all.unknownPrefix +
                     "\" stands for: \"Namespaces\" (namespaces) does not declare it.";
        step.next = "Declare it in \"Namespaces\" (namespaces).";
    }
    return step;
}

/// As far as to the stop, whose predicates are left out.
LocationPath XmlStop::stoppedPath() const {
    LocationPath path = path_;
    path.steps.resize(stop_ + 1);
    path.steps.back().predicates.clear();
    return path;
}

/// `found`: what `tested`, the path as far as to the stop, finds.
std::string XmlStop::causeOfNames(LocationPath tested, const Nodes& found) {
    const XPathStep& step = path_.steps[stop_];
    if (!found.empty())
        return counted(found.size(), step.name + " element") +
               (found.size() == 1 ? " is there, and does not meet "
                                  : " are there, and none meets ") +
               step.predicates + "." + causeOfPredicate(tested.text());
    const Nodes above = parents(path_, stop_);
    tested.steps.back().name = "*[local-name()='" + step.localName() + "']";
    const Nodes sameName = step.isName() ? queries_.ask(tested.text()).nodes : Nodes{};
    if (!sameName.empty()) return causeOfNamespace(sameName.front());
    const std::string parent = stop_ == 0 ? "The document" : quoted(path_.steps[stop_ - 1].text());
    const std::vector<std::string> there = namesIn(above, step.isAttribute());
    const std::string kind = step.isAttribute() ? "attribute " : "element ";
    const std::string wanted = step.isName() ? kind + quoted(step.name) : quoted(step.text());
    return parent + (step.anyDepth ? " has nowhere an " : " has no ") + wanted + ". " +
           (there.empty() ? "It has none at all." : "It has: " + listOf(there) + ".");
}

std::string XmlStop::causeOfPredicate(const std::string& tested) {
    const std::string compared = comparedIn(path_.steps[stop_].predicates);
    if (compared.empty()) return "";
    NameList values;
    for (const xmlNode* node : queries_.ask(tested + "/" + compared).nodes) {
        std::string value;
        intake::appendNodeText(node, value);
        values.add(value);
    }
    return values.names().empty() ? " None has " + quoted(compared) + "."
                                  : " " + quoted(compared) + " is: " + listOf(values.names()) + ".";
}

std::string XmlStop::causeOfNamespace(const xmlNode* there) const {
    const XPathStep& step = path_.steps[stop_];
    const std::string thing = step.isAttribute() ? "attribute " : "element ";
    const std::string isThere = "The " + thing + quoted(step.localName()) + " is there, but in ";
    if (there->ns == nullptr) return isThere + "no namespace, and so without a prefix.";
    const bool isKnown = viewOf(there->ns->prefix) == "xml";
    return isThere + "the namespace " + quoted(addressOf(there->ns)) + ". In an XPath it needs " +
           (isKnown ? "the prefix \"xml\", which needs no declaration."
                    : "a prefix, which \"Namespaces\" (namespaces) declares.");
}

/// The prefix that stands for a namespace in the expression; declares one where there is none.
std::string XmlStop::prefixFor(const xmlNs* space) {
    const std::string own(viewOf(space->prefix));
    const std::string wanted = own.empty() ? "d" : own;
    const XmlQueries known(document_, namespaces_);
    for (int number = 1;; ++number) {
        const std::string prefix = number == 1 ? wanted : wanted + std::to_string(number);
        const std::string_view address = known.addressOf(prefix);
        if (address == viewOf(space->href)) return prefix;
        if (!address.empty()) continue;  // it stands for another namespace
        namespaces_ += (namespaces_.empty() ? "" : " ") + declarationOf(prefix, addressOf(space));
        return prefix;
    }
}

/// Puts the name that is there in the place of that of a step; false when it is not known which.
bool XmlStop::mend(std::size_t number) {
    XPathStep& step = path_.steps[number];
    if (!step.isName()) return true;
    queries_ = XmlQueries(document_, namespaces_);
    const Nodes above = parents(path_, number);
    NameList list;
    for (const std::string& name : namesIn(above, step.isAttribute()))
        list.add(localOf(name));
    const std::vector<std::string>& locals = list.names();
    const bool isThere = std::find(locals.begin(), locals.end(), step.localName()) != locals.end();
    const std::string local = isThere ? step.localName() : nearName(step.localName(), locals);
    if (local.empty()) return false;
    for (const xmlNode* node : above) {
        const xmlNode* const found = findNamed(node, local, step.isAttribute());
        if (found == nullptr) continue;
        step.name = (found->ns == nullptr ? "" : prefixFor(found->ns) + ":") + local;
        return true;
    }
    return false;
}

/// Puts all names right; false when the path finds nothing even so.
bool XmlStop::mendAll() {
    for (std::size_t i = 0; i < path_.steps.size(); ++i) {
        if (!mend(i)) return false;
    }
    queries_ = XmlQueries(document_, namespaces_);
    return !queries_.ask(path_.text()).nodes.empty();
}

/// Where names do not help, the predicates that nothing meets even so are left out.
std::optional<Proposal> XmlStop::remedy() {
    const LocationPath before = path_;
    const std::string namespacesBefore = namespaces_;
    const std::size_t stopBefore = stop_;
    bool isMended = mendAll();
    for (; !isMended; isMended = mendAll()) {
        findStop();
        if (path_.steps[stop_].predicates.empty()) break;
        path_.steps[stop_].predicates.clear();
    }
    Proposal proposal;
    if (namespaces_ != namespacesBefore) proposal.emplace_back("namespaces", namespaces_);
    if (path_.text() != before.text()) proposal.emplace_back("xpath", path_.text());
    path_ = before;
    namespaces_ = namespacesBefore;
    stop_ = stopBefore;
    if (!isMended || proposal.empty()) return std::nullopt;
    return proposal;
}

}  // namespace probe
