#include "workbench/probe/explore/explore_source.h"

#include "workbench/probe/LookFailure.h"
#include "workbench/probe/explore/html_outline.h"
#include "workbench/probe/explore/json_outline.h"
#include "workbench/probe/explore/workbook_outline.h"
#include "workbench/probe/explore/xml_outline.h"
#include "workbench/probe/fetch/Fetched.h"
#include "workbench/probe/fetch/source_start.h"
#include "workbench/probe/kinds.h"

namespace probe {

namespace {

constexpr long firstErrorStatus = 400;

Outline outlineOf(QueryType type, Fetched source, const OutlineWish& wish) {
    switch (type) {
        case QueryType::Json:
            return jsonOutline(std::move(source.body), wish);
        case QueryType::Xml:
            return xmlOutline(source, wish);
        case QueryType::Html:
            return htmlOutline(source, wish);
        case QueryType::Excel:
            return workbookOutline(source, wish);
        default:
            throw LookFailure(
                "is an SQLite database; what is looked into is JSON, XML, HTML pages "
                "and workbooks");
    }
}

/// The headers of a fetch are those of the query type: an address by whose settings nothing can be
/// fetched is asked for as JSON is.
Settings fetchable(Settings settings) {
    const bool reads = settings.queryMode == QueryType::Json ||
                       settings.queryMode == QueryType::Xml ||
                       settings.queryMode == QueryType::Html;
    if (isUrl(settings.filename) && !reads) settings.queryMode = QueryType::Json;
    return settings;
}

}  // namespace

Explored exploreSource(const Settings& settings, const OutlineWish& wish, double timeoutSeconds) {
    Fetched source = fetch(fetchable(settings), timeoutSeconds);
    const Kind kind = recognise(source.body);
    Explored explored;
    explored.words = wordsFor(kind, source.body);
    explored.bytes = source.body.size();
    const auto type = queryTypeFor(kind);
    if (source.status >= firstErrorStatus)
        explored.words += ", with status " + std::to_string(source.status);
    if (!type)
        throw LookFailure("is " + explored.words +
                          "; what is looked into is JSON, XML, HTML pages and workbooks");
    explored.queryMode = *type;
    explored.outline = outlineOf(*type, std::move(source), wish);
    return explored;
}

}  // namespace probe
