#include "tests/platform/make_pipe.h"

#include <sys/stat.h>

#include <cerrno>
#include <system_error>

namespace intake {

std::string makePipe(const std::string& directory) {
    const std::string path = directory + "/pipe";
    if (mkfifo(path.c_str(), 0600) != 0) {
        throw std::system_error(errno, std::generic_category(), path);
    }
    return path;
}

}  // namespace intake
