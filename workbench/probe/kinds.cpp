#include "workbench/probe/kinds.h"

#include <array>

#include "workbench/probe/words.h"

namespace probe {

namespace {

struct KindRow {
    Kind kind;
    const char* words;
    std::optional<QueryType> queryType;
};

// In the order of Kind.
constexpr std::array kinds{
    KindRow{Kind::Empty, "empty", {}},
    KindRow{Kind::Json, "JSON", QueryType::Json},
    KindRow{Kind::Xml, "XML", QueryType::Xml},
    KindRow{Kind::Html, "an HTML page", QueryType::Html},
    KindRow{Kind::Workbook, "a workbook", QueryType::Excel},
    KindRow{Kind::OldDocument, "an office document of the old form, or an encrypted one",
            QueryType::Excel},
    KindRow{Kind::Zip, "an archive (ZIP)", {}},
    KindRow{Kind::Gzip, "compressed (gzip)", {}},
    KindRow{Kind::Sqlite, "an SQLite database", QueryType::Sql},
    KindRow{Kind::Pdf, "a PDF document", {}},
    KindRow{Kind::Image, "an image", {}},
    KindRow{Kind::Text, "a text, and neither JSON nor XML nor HTML", {}},
    KindRow{Kind::Unknown, "of a kind that is not known", {}},
};

struct TypeRow {
    const char* name;
    const char* value;
};

// In the order of QueryType.
constexpr std::array types{TypeRow{"EXCEL", "EXCEL"}, TypeRow{"SQL", "SQL"}, TypeRow{"XML", "XML"},
                           TypeRow{"JSON", "JSON"}, TypeRow{"HTML", "4"}};

const KindRow& rowOf(Kind kind) {
    return kinds[static_cast<std::size_t>(kind)];
}

}  // namespace

const char* wordsFor(Kind kind) {
    return rowOf(kind).words;
}

std::string wordsFor(Kind kind, std::string_view start) {
    const std::string title = kind == Kind::Html ? titleOf(start) : "";
    return wordsFor(kind) + (title.empty() ? "" : " titled " + quoted(title));
}

std::optional<QueryType> queryTypeFor(Kind kind) {
    return rowOf(kind).queryType;
}

const char* nameOf(QueryType type) {
    return types[static_cast<std::size_t>(type)].name;
}

const char* valueOf(QueryType type) {
    return types[static_cast<std::size_t>(type)].value;
}

}  // namespace probe
