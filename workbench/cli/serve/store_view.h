#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/cli/Redaction.h"
#include "workbench/cli/run/LiveScene.h"
#include "workbench/cobalt/Store.h"

namespace workbench {

/// A field or an entry of the store, as a page shows it.
struct ShownValue {
    std::string name;  // of an entry, its key
    cobalt::Kind kind;
    std::size_t size;           // how many entries there are below it
    std::string start;          // of the value
    std::optional<double> age;  // in seconds; nothing where no load has written it
    std::string writer;         // the instance
    bool isLeftOver;            // from an older load than its last
};

struct ShownFields {
    std::vector<ShownValue> fields;
    std::size_t leftOut;
};

/// A field and a page of its entries.
struct ShownEntries {
    ShownValue field;
    std::vector<ShownValue> entries;
};

/// Host's thread.
ShownFields shownFields(const LiveScene& scene, const cobalt::Store& store);
ShownEntries shownEntries(const LiveScene& scene, const cobalt::Field& field, std::size_t from,
                          std::size_t count);

/// As JSON, in which nothing secret is left. Any thread.
std::string fieldsJson(const ShownFields& shown, const Redaction& redact);
std::string entriesJson(const ShownEntries& shown, const Redaction& redact);

/// Whether the field is the one that is told by that name.
bool isToldAs(const std::string& told, const cobalt::Field& field, const Redaction& redact);

/// The field that is told by that name, or null.
const cobalt::Field* findTold(const cobalt::Store& store, const std::string& told,
                              const Redaction& redact);

}  // namespace workbench
