#include "tests/platform/make_pipe.h"

#include <sys/stat.h>

#include <cerrno>
#include <system_error>

namespace intake {

void makePipe(const std::string& path) {
    if (mkfifo(path.c_str(), 0600) != 0) {
        throw std::system_error(errno, std::generic_category(), path);
    }
}

}  // namespace intake
