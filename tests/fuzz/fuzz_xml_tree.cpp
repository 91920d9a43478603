// Of whatever the scanner of XML documents reads, its tree is the one that the parser gives, and
// the same but for the attributes when these are unwanted.

#include <cstdlib>

#include "formats/xml/TreeReader.h"
#include "formats/xml/libxml_setup.h"
#include "formats/xml/xml_load.h"
#include "tests/formats/xml/tree_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    intake::setUpLibxml();
    const intake::EndMark endMark;
    const intake::TextSource source({reinterpret_cast<const char*>(data), size});
    const intake::XmlDoc scanned =
        intake::scanTree(source, "", endMark, intake::ANY_NUMBER_OF_NODES);
    if (scanned != nullptr) {
        const intake::LoadedXml parsed = intake::parseXml(source, endMark);
        if (parsed.document == nullptr ||
            intake::treeText(scanned.get()) != intake::treeText(parsed.document.get())) {
            std::abort();
        }
    }
    const intake::XmlDoc bare = intake::scanTree(source, "", endMark, intake::ANY_NUMBER_OF_NODES,
                                                 intake::KeptAttributes::NONE);
    if ((bare == nullptr) != (scanned == nullptr)) {
        std::abort();
    }
    if (bare != nullptr) {
        intake::removeAttributes(scanned.get());
        if (intake::treeText(bare.get()) != intake::treeText(scanned.get())) {
            std::abort();
        }
    }
    return 0;
}
