#include "workbench/probe/fetch/fetch_file.h"

#include <filesystem>

namespace probe {

namespace {

using Stage = FetchFailure::Stage;

[[noreturn]] void refuseMissing(const std::string& file) {
    std::error_code error;
    const auto place = std::filesystem::absolute(file, error);
    throw FetchFailure(Stage::Address, "is not there; it was looked for as " + place.string(),
                       "Correct \"File Name\" (filename). A path that does not begin at the root "
                       "starts at the folder in which the host was started.");
}

[[noreturn]] void refuse(Stage stage, const char* words, const char* next) {
    throw FetchFailure(stage, words, next);
}

}  // namespace

std::ifstream openedFile(const std::string& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) refuseMissing(file);
    if (std::filesystem::is_directory(status))
        refuse(Stage::Address, "is a folder",
               "Set \"File Name\" (filename) to a file in this folder.");
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        refuse(Stage::Address, "is no file but a pipe or a device",
               "Let what writes there write a file, and set \"File Name\" (filename) to it.");
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        refuse(Stage::Fetched, "cannot be opened; you may not be allowed to read it",
               "Let the user who runs the host read the file and open the folders above it, and "
               "see that no other program has it locked.");
    return stream;
}

FetchFailure tooLarge(const Source& source) {
    return {Stage::Fetched, "is larger than " + source.mostBytesInWords + ", the most that is read",
            "Set \"File Name\" (filename) to a smaller source."};
}

Fetched fetchFile(const Source& source) {
    std::ifstream stream = openedFile(source.place);
    std::error_code error;
    const auto size = std::filesystem::file_size(source.place, error);
    if (!error && size > source.mostBytes) throw tooLarge(source);
    Fetched fetched;
    fetched.address = source.place;
    fetched.body.resize(error ? 0 : static_cast<std::size_t>(size));
    stream.read(fetched.body.data(), static_cast<std::streamsize>(fetched.body.size()));
    fetched.body.resize(static_cast<std::size_t>(stream.gcount()));
    if (error || stream.bad())
        refuse(Stage::Fetched, "breaks off while it is read",
               "Copy the file to a disk of this machine, and set \"File Name\" (filename) to the "
               "copy.");
    return fetched;
}

}  // namespace probe
