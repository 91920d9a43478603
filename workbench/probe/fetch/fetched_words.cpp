#include "workbench/probe/fetch/fetched_words.h"

#include "formats/html/page_encoding.h"
#include "formats/text/media_type.h"
#include "workbench/probe/kinds.h"

namespace probe {

std::string wordsFor(Kind kind, const Fetched& source) {
    if (kind != Kind::Html) return wordsFor(kind, source.body);
    // As much of the page as has its title.
    return wordsFor(kind, intake::html::decodePage(source.body.substr(0, recognisableBytes),
                                                   intake::charsetOf(source.contentType)));
}

}  // namespace probe
