#include "formats/xml/libxml_setup.h"

#include <libxml/parser.h>

namespace intake {

namespace {

void ignoreText(void*, const char*, ...) {}
void ignoreError(void*, xmlError*) {}

}  // namespace

void setUpLibxml() {
    // The library's own state is not safe to be set up by two threads at once.
    [[maybe_unused]] static const bool isInitialized = (xmlInitParser(), true);
    xmlSetGenericErrorFunc(nullptr, ignoreText);
    xmlSetStructuredErrorFunc(nullptr, ignoreError);
}

}  // namespace intake
