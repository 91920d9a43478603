#include "formats/workbook/table_names.h"

#include <algorithm>

#include "formats/text/fold_case.h"

namespace intake {

namespace {

/// Takes the single quotes off a sheet's name at the start: 'Ann''s sheet$'B2 becomes Ann's
/// sheet$B2.
std::string withoutQuotes(std::string_view name) {
    if (!name.starts_with('\'')) {
        return std::string(name);
    }
    std::string bare;
    for (size_t at = 1; at < name.size(); ++at) {
        if (name[at] == '\'' && (++at == name.size() || name[at] != '\'')) {
            return bare.append(name.substr(at));
        }
        bare += name[at];
    }
    return std::string(name);
}

std::optional<size_t> findSheet(const WorkbookIndex& index, std::string_view name) {
    const std::string wanted = foldCase(name);
    const auto& sheets = index.sheets();
    const auto found = std::find_if(sheets.begin(), sheets.end(), [&](const SheetEntry& sheet) {
        return foldCase(sheet.name) == wanted;
    });
    return found == sheets.end() ? std::nullopt
                                 : std::optional(static_cast<size_t>(found - sheets.begin()));
}

/// Resolves a name's reference: a sheet, an exclamation mark and a plain range.
std::optional<TablePlace> resolve(const WorkbookIndex& index, std::string_view reference) {
    const size_t mark = reference.rfind('!');
    if (mark == std::string_view::npos) {
        return {};
    }
    const auto sheet = findSheet(index, withoutQuotes(reference.substr(0, mark)));
    const auto range = parseRange(reference.substr(mark + 1));
    return sheet && range ? std::optional(TablePlace{*sheet, range}) : std::nullopt;
}

std::optional<TablePlace> findName(const WorkbookIndex& index, const std::string& folded,
                                   std::optional<size_t> sheet) {
    for (const DefinedName& each : index.names()) {
        if (each.sheet == sheet && foldCase(each.name) == folded) {
            return resolve(index, each.reference);
        }
    }
    return {};
}

}  // namespace

std::optional<TablePlace> findTable(const WorkbookIndex& index, std::string_view name) {
    const std::string wanted = foldCase(withoutQuotes(name));
    for (size_t sheet = 0; sheet < index.sheets().size(); ++sheet) {
        const std::string prefix = foldCase(index.sheets()[sheet].name) + "$";
        if (!wanted.starts_with(prefix)) {
            continue;
        }
        const std::string rest = wanted.substr(prefix.size());
        if (rest.empty()) {
            return TablePlace{sheet, {}};
        }
        if (const auto range = parseRange(rest)) {
            return TablePlace{sheet, range};
        }
        if (const auto place = findName(index, rest, sheet)) {
            return place;
        }
    }
    return findName(index, wanted, {});
}

}  // namespace intake
