#include "tests/workbench/cli/ChildProcess.h"

#include <windows.h>

#include <fstream>
#include <iterator>

namespace {

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// As the C library of the child takes a command line apart.
std::string quoted(const std::string& argument) {
    std::string out = "\"";
    std::size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '"') out.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        out += c;
    }
    return out.append(backslashes, '\\') + '"';
}

std::string commandLine(const std::string& program, const std::vector<std::string>& arguments) {
    std::string line = quoted(program);
    for (const std::string& argument : arguments)
        line += ' ' + quoted(argument);
    return line;
}

/// A file that a child may use as one of its standard streams.
class Stream {
public:
    Stream(const std::string& file, DWORD access, DWORD disposition) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        handle_ = CreateFileA(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                              disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    ~Stream() { CloseHandle(handle_); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    HANDLE handle() const { return handle_; }

private:
    HANDLE handle_;
};

int exitStatus(PROCESS_INFORMATION process) {
    DWORD status = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return status > 255 ? -1 : static_cast<int>(status);  // an exception's code is far above
}

int run(std::string line, const std::filesystem::path& folder, const std::string& out,
        const std::string& err) {
    const Stream nothing("NUL", GENERIC_READ, OPEN_EXISTING);
    const Stream output(out, GENERIC_WRITE, CREATE_ALWAYS);
    const Stream error(err, GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = nothing.handle();
    start.hStdOutput = output.handle();
    start.hStdError = error.handle();
    PROCESS_INFORMATION process{};
    if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                       folder.string().c_str(), &start, &process) == 0) {
        return -1;
    }
    return exitStatus(process);
}

}  // namespace

ChildResult runChild(const std::string& program, const std::vector<std::string>& arguments,
                     const std::filesystem::path& folder) {
    const std::string out = (folder / "stdout.txt").string();
    const std::string err = (folder / "stderr.txt").string();
    const int status = run(commandLine(program, arguments), folder, out, err);
    return {status, contents(out), contents(err)};
}
