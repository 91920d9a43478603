#include "workbench/cli/serve/file_list.h"

#include "workbench/cli/JsonWriter.h"

namespace workbench {

std::string fileListJson(const StartFolder::Listing& listing) {
    JsonWriter out;
    out.open('{');
    out.name("files");
    out.open('[');
    for (const std::string& file : listing.files)
        out.text(file);
    out.close(']');
    out.member("leftOut", listing.leftOut);
    out.name("endedEarly");
    out.boolean(listing.hasEndedEarly);
    out.close('}');
    return out.take();
}

}  // namespace workbench
