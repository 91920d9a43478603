# Writes OUTPUT, a source with the files of the page in FOLDER.
cmake_minimum_required(VERSION 3.22)
set(types html "text/html; charset=utf-8" js "text/javascript; charset=utf-8"
    css "text/css; charset=utf-8" svg "image/svg+xml")
file(GLOB files RELATIVE "${FOLDER}" "${FOLDER}/*")
set(arrays "")
set(rows "")
set(number 0)
foreach(file IN LISTS files)
    file(READ "${FOLDER}/${file}" bytes HEX)
    string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
    string(APPEND arrays "constexpr char file${number}[] = {${bytes}'\\0'};\n")
    get_filename_component(extension "${file}" LAST_EXT)
    string(SUBSTRING "${extension}" 1 -1 extension)
    list(FIND types "${extension}" at)
    math(EXPR at "${at} + 1")
    list(GET types ${at} type)
    string(APPEND rows "    WebFile{\"/${file}\", \"${type}\", {file${number}, sizeof(file${number}) - 1}},\n")
    math(EXPR number "${number} + 1")
endforeach()
file(CONFIGURE OUTPUT "${OUTPUT}" CONTENT "#include \"workbench/cli/serve/web_files.h\"

#include <algorithm>
#include <array>

namespace workbench {

namespace {

@arrays@
constexpr std::array files{
@rows@};

}  // namespace

const WebFile* findWebFile(std::string_view path) {
    const std::string_view wanted = path == \"/\" ? \"/index.html\" : path;
    const auto* const found = std::find_if(
        files.begin(), files.end(), [&](const WebFile& file) { return file.path == wanted; });
    return found == files.end() ? nullptr : found;
}

}  // namespace workbench
" @ONLY)
