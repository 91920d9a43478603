// Has one of each thing that scripts/gdb/intake.py shows, and stops where it is told to.

#include <cstring>
#include <string>
#include <utility>

#include "formats/html/Page.h"
#include "formats/json/JsonDocument.h"
#include "formats/source/ByteSource.h"
#include "formats/xml/libxml_setup.h"
#include "formats/xml/xml_load.h"
#include "workbench/cobalt/Value.h"

namespace {

const intake::EndMark NEVER;

intake::ByteBuffer bufferOf(const char* text) {
    intake::ByteBuffer buffer;
    const size_t size = std::strlen(text) + 1;
    std::memcpy(buffer.prepare(size), text, size);
    buffer.commit(size);
    return buffer;
}

cobalt::Value record() {
    cobalt::Entries members;
    members.define("club") = cobalt::Value::text("Greywharf");
    members.define("won") = cobalt::Value::fromUnquoted("7.50");
    return cobalt::Value::structure(std::move(members));
}

void stopHere() {}

}  // namespace

int main() {
    intake::setUpLibxml();
    const intake::ByteBuffer buffer = bufferOf("abc");
    const intake::JsonDocument json(bufferOf(R"({"club": "Greywharf", "score": [2, true]})"));
    const auto parsed = intake::html::parsePage("<p class=top>Greywharf<br>", NEVER);
    const intake::html::Node& page = parsed->document;
    const intake::LoadedXml xml =
        intake::loadXml(intake::TextSource("<row><club>Greywharf</club><!--c--></row>"), NEVER);
    const xmlNode* const element = xmlDocGetRootElement(xml.document.get());
    const cobalt::Value value = record();
    stopHere();
    return element == nullptr || page.firstChild == nullptr;
}
