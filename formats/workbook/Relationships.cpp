#include "formats/workbook/Relationships.h"

#include <algorithm>

namespace intake {

namespace {

enum State : ElementPath::State { OUTSIDE, LIST, RELATIONSHIP };

constexpr std::array<ElementPath::Step, 2> STEPS{{
    {OUTSIDE, "Relationships", LIST},
    {LIST, "Relationship", RELATIONSHIP},
}};

size_t folderLength(std::string_view part) {
    return part.rfind('/') + 1;
}

}  // namespace

Relationships::Relationships(std::string_view source)
    : folder_(source.substr(0, folderLength(source))), path_(STEPS) {}

std::string Relationships::partFor(std::string_view source) {
    const size_t folder = folderLength(source);
    return std::string(source.substr(0, folder))
        .append("_rels/")
        .append(source.substr(folder))
        .append(".rels");
}

const Relationships::Target* Relationships::byId(std::string_view id) const {
    const auto found = std::find_if(targets_.begin(), targets_.end(),
                                    [id](const Target& target) { return target.id == id; });
    return found == targets_.end() ? nullptr : &*found;
}

const Relationships::Target* Relationships::byType(std::string_view type) const {
    const auto found = std::find_if(targets_.begin(), targets_.end(),
                                    [type](const Target& target) { return target.type == type; });
    return found == targets_.end() ? nullptr : &*found;
}

void Relationships::startDocument() {
    path_.restart();
    targets_.clear();
}

void Relationships::startElement(std::string_view name, const XmlAttributes& attributes) {
    if (path_.enter(name) != RELATIONSHIP || attributes.value("TargetMode") == "External") {
        return;
    }
    const std::string_view type = attributes.value("Type");
    targets_.push_back({std::string(attributes.value("Id")),
                        std::string(type.substr(type.rfind('/') + 1)),
                        resolve(attributes.value("Target"))});
}

bool Relationships::endElement() {
    path_.leave();
    return true;
}

/// A target's full name: it is relative to the source's folder unless a slash stands before it.
std::string Relationships::resolve(std::string_view target) const {
    const bool isAbsolute = target.starts_with('/');
    std::string folder = isAbsolute ? "" : folder_;
    target.remove_prefix(isAbsolute ? 1 : 0);
    for (size_t slash = target.find('/'); slash != std::string_view::npos;
         slash = target.find('/')) {
        const std::string_view step = target.substr(0, slash);
        if (step == "..") {
            folder.resize(folder.empty() ? 0 : folderLength({folder.data(), folder.size() - 1}));
        } else if (step != ".") {
            folder.append(step).append("/");
        }
        target.remove_prefix(slash + 1);
    }
    return folder.append(target);
}

}  // namespace intake
