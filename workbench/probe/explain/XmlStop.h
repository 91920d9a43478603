#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "workbench/probe/explain/Ladder.h"
#include "workbench/probe/explain/XmlQueries.h"
#include "workbench/probe/xpath_text.h"

namespace probe {

/// Where a location path that finds nothing stops, and why. Borrows the document.
class XmlStop {
public:
    XmlStop(xmlDoc* document, const std::string& namespaces, LocationPath path);

    /// What is to be told of it.
    Step step();

    /// The path with the names, and the namespaces, that are there; nothing when it is not known
    /// what was meant.
    std::optional<Proposal> remedy();

private:
    void findStop();
    std::vector<xmlNode*> parents(const LocationPath& path, std::size_t step);
    LocationPath stoppedPath() const;
    std::string causeOfNames(LocationPath tested, const std::vector<xmlNode*>& found);
    std::string causeOfPredicate(const std::string& tested);
    std::string causeOfNamespace(const xmlNode* there) const;
    bool mend(std::size_t step);
    bool mendAll();
    std::string prefixFor(const xmlNs* space);

    xmlDoc* document_;
    std::string namespaces_;
    XmlQueries queries_;
    LocationPath path_;
    std::size_t stop_ = 0;
};

/// The names of the elements, or of the attributes, that these nodes have, each once.
std::vector<std::string> namesIn(const std::vector<xmlNode*>& nodes, bool attributes);

}  // namespace probe
