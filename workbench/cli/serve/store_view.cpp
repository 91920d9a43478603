#include "workbench/cli/serve/store_view.h"

#include <algorithm>
#include <array>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/moments.h"
#include "workbench/cli/value_text.h"

namespace workbench {

namespace {

constexpr std::size_t mostFields = 500;  // in one answer
constexpr std::size_t mostEntries = 200;

// In the order of cobalt::Kind.
constexpr std::array kinds{"text", "number", "structure", "array"};

class StoreView {
public:
    explicit StoreView(const LiveScene& scene) : scene_(scene), redact_(scene.redaction()) {}

    void writeField(const cobalt::Field& field) {
        out_.open('{');
        out_.name("name");
        out_.text(field.name());
        writeKind(field.value());
        writeValue(field.value());
        writeOrigin(originOf(field));
        out_.close('}');
    }

    void writeEntry(const cobalt::Entry& entry) {
        out_.open('{');
        out_.name("key");
        out_.text(entry.key);
        writeValue(entry.value);
        writeOrigin(entry.origin);
        out_.close('}');
    }

    void writeKind(const cobalt::Value& value) {
        out_.name("kind");
        out_.text(kinds[static_cast<std::size_t>(value.kind())]);
        out_.name("size");
        out_.number(static_cast<double>(value.entries().size()));
    }

    JsonWriter& out() { return out_; }

private:
    void writeValue(const cobalt::Value& value) {
        out_.name("value");
        out_.text(redact_(startOf(value)));
    }

    /// Of a field that loads write entry by entry, that of the first one.
    static cobalt::Origin originOf(const cobalt::Field& field) {
        const cobalt::Entries& entries = field.value().entries();
        const bool isByEntry = field.origin().writer == 0 && !entries.empty();
        return isByEntry ? entries.begin()->origin : field.origin();
    }

    void writeOrigin(cobalt::Origin origin) {
        const bool isKnown = origin.writer != 0;
        out_.name("age");
        if (isKnown) {
            out_.number(secondsSince(origin.moment));
        } else {
            out_.null();
        }
        out_.name("writer");
        out_.text(scene_.nameOfWriter(origin.writer));
        out_.name("leftOver");
        out_.boolean(isKnown && origin.moment != scene_.lastMomentOf(origin.writer));
    }

    const LiveScene& scene_;
    const Redaction redact_;
    JsonWriter out_;
};

}  // namespace

std::string fieldsJson(const cobalt::Store& store, const LiveScene& scene) {
    StoreView view(scene);
    JsonWriter& out = view.out();
    out.open('{');
    out.name("fields");
    out.open('[');
    std::size_t count = 0;
    for (const cobalt::Field& field : store) {
        if (count++ == mostFields) break;
        view.writeField(field);
    }
    out.close(']');
    out.name("leftOut");
    out.number(static_cast<double>(store.size() - std::min(store.size(), mostFields)));
    out.close('}');
    return out.take();
}

std::string entriesJson(const cobalt::Field& field, const LiveScene& scene, std::size_t from,
                        std::size_t count) {
    const cobalt::Entries& entries = field.value().entries();
    const std::size_t first = std::min(from, entries.size());
    const std::size_t last = first + std::min({count, mostEntries, entries.size() - first});
    StoreView view(scene);
    JsonWriter& out = view.out();
    out.open('{');
    out.name("name");
    out.text(field.name());
    view.writeKind(field.value());
    out.name("entries");
    out.open('[');
    for (std::size_t i = first; i < last; ++i)
        view.writeEntry(entries[i]);
    out.close(']');
    out.close('}');
    return out.take();
}

}  // namespace workbench
