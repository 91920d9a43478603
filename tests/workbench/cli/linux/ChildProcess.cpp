#include "tests/workbench/cli/ChildProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

namespace {

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void redirect(const char* file, int flags, int descriptor) {
    dup2(open(file, flags, 0600), descriptor);
}

[[noreturn]] void become(const std::vector<char*>& arguments, const std::filesystem::path& folder,
                         const std::string& out, const std::string& err) {
    redirect("/dev/null", O_RDONLY, STDIN_FILENO);
    redirect(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    redirect(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    if (chdir(folder.c_str()) == 0) execv(arguments[0], arguments.data());
    _exit(127);
}

}  // namespace

ChildResult runChild(const std::string& program, const std::vector<std::string>& arguments,
                     const std::filesystem::path& folder) {
    const std::string out = folder / "stdout.txt";
    const std::string err = folder / "stderr.txt";
    std::vector<char*> pointers{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);

    const pid_t child = fork();
    if (child == 0) become(pointers, folder, out, err);
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(out), contents(err)};
}
