#include "formats/workbook/SharedStrings.h"

#include "formats/workbook/cell_text.h"

namespace intake {

namespace {

enum State : ElementPath::State { OUTSIDE, STRINGS, STRING, RUN, TEXT };

constexpr std::array<ElementPath::Step, 5> STEPS{{
    {STRINGS, "si", STRING},
    {STRING, "t", TEXT},
    {STRING, "r", RUN},
    {RUN, "t", TEXT},
    {OUTSIDE, "sst", STRINGS},
}};

}  // namespace

SharedStrings::SharedStrings(size_t expectedBytes) : path_(STEPS), expectedBytes_(expectedBytes) {}

void SharedStrings::startDocument() {
    path_.restart();
    texts_.restart(expectedBytes_);
}

void SharedStrings::startElement(std::string_view name, const XmlAttributes&) {
    if (path_.enter(name) == STRING) {
        text_.clear();
    }
}

bool SharedStrings::endElement() {
    if (path_.leave() == STRING) {
        decodeEscapes(text_);
        texts_.add(text_);
    }
    return true;
}

void SharedStrings::text(std::string_view text) {
    if (path_.state() == TEXT) {
        text_.append(text);
    }
}

}  // namespace intake
