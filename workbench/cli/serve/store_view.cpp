#include "workbench/cli/serve/store_view.h"

#include <algorithm>
#include <array>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/moments.h"
#include "workbench/cli/value_text.h"

namespace workbench {

namespace {

constexpr std::size_t mostFields = 500;  // in one answer
constexpr std::size_t mostEntries = 200;

// In the order of cobalt::Kind.
constexpr std::array kinds{"text", "number", "structure", "array"};

ShownValue shown(const LiveScene& scene, const std::string& name, const cobalt::Value& value,
                 cobalt::Origin origin) {
    const bool isKnown = origin.writer != 0;
    return {name,
            value.kind(),
            value.entries().size(),
            startOf(value),
            isKnown ? std::optional(secondsSince(origin.moment)) : std::nullopt,
            scene.nameOfWriter(origin.writer),
            isKnown && origin.moment != scene.lastMomentOf(origin.writer)};
}

/// Of a field that loads write entry by entry, that of the first one.
cobalt::Origin originOf(const cobalt::Field& field) {
    const cobalt::Entries& entries = field.value().entries();
    const bool isByEntry = field.origin().writer == 0 && !entries.empty();
    return isByEntry ? entries.begin()->origin : field.origin();
}

ShownValue shown(const LiveScene& scene, const cobalt::Field& field) {
    return shown(scene, field.name(), field.value(), originOf(field));
}

void writeKind(const ShownValue& value, JsonWriter& out) {
    out.member("kind", kinds[static_cast<std::size_t>(value.kind)]);
    out.member("size", value.size);
}

void writeValue(const ShownValue& value, const Redaction& redact, JsonWriter& out) {
    out.member("value", redact(value.start));
    out.member("age", value.age);
    out.member("writer", value.writer);
    out.member("leftOver", value.isLeftOver);
}

}  // namespace

ShownFields shownFields(const LiveScene& scene, const cobalt::Store& store) {
    ShownFields all{{}, store.size() - std::min(store.size(), mostFields)};
    for (const cobalt::Field& field : store) {
        if (all.fields.size() == mostFields) break;
        all.fields.push_back(shown(scene, field));
    }
    return all;
}

ShownEntries shownEntries(const LiveScene& scene, const cobalt::Field& field, std::size_t from,
                          std::size_t count) {
    const cobalt::Entries& entries = field.value().entries();
    const std::size_t first = std::min(from, entries.size());
    const std::size_t last = first + std::min({count, mostEntries, entries.size() - first});
    ShownEntries page{shown(scene, field), {}};
    for (std::size_t i = first; i < last; ++i)
        page.entries.push_back(shown(scene, entries[i].key, entries[i].value, entries[i].origin));
    return page;
}

std::string fieldsJson(const ShownFields& all, const Redaction& redact) {
    JsonWriter out;
    out.open('{');
    out.name("fields");
    out.open('[');
    for (const ShownValue& field : all.fields) {
        out.open('{');
        out.member("name", redact(toUtf8(field.name)));
        writeKind(field, out);
        writeValue(field, redact, out);
        out.close('}');
    }
    out.close(']');
    out.member("leftOut", all.leftOut);
    out.close('}');
    return out.take();
}

std::string entriesJson(const ShownEntries& page, const Redaction& redact) {
    JsonWriter out;
    out.open('{');
    out.member("name", redact(toUtf8(page.field.name)));
    writeKind(page.field, out);
    out.name("entries");
    out.open('[');
    for (const ShownValue& entry : page.entries) {
        out.open('{');
        out.member("key", redact(toUtf8(entry.name)));
        writeValue(entry, redact, out);
        out.close('}');
    }
    out.close(']');
    out.close('}');
    return out.take();
}

bool isToldAs(const std::string& told, const cobalt::Field& field, const Redaction& redact) {
    const bool isHidden = told.find(hiddenText) != std::string::npos;
    return field.name() == told || (isHidden && redact(toUtf8(field.name())) == told);
}

const cobalt::Field* findTold(const cobalt::Store& store, const std::string& told,
                              const Redaction& redact) {
    if (const cobalt::Field* const named = store.find(told)) return named;
    const auto found = std::find_if(store.begin(), store.end(), [&](const cobalt::Field& field) {
        return isToldAs(told, field, redact);
    });
    return found == store.end() ? nullptr : &*found;
}

}  // namespace workbench
