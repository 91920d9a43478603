#include "tests/http/support/FtpDaemon.h"

#include <unistd.h>

#include "tests/http/support/loopback.h"

namespace intake {

namespace {

/// The sandbox and the namespaces are not to be had within every container. That the served folder
/// is ours to write matters to nobody here.
constexpr const char* CONFIGURATION = R"(listen=YES
listen_address=127.0.0.1
background=NO
anonymous_enable=YES
local_enable=NO
allow_writeable_chroot=YES
connect_from_port_20=NO
isolate=NO
isolate_network=NO
seccomp_sandbox=NO
)";

}  // namespace

FtpDaemon::FtpDaemon(const std::string& password) {
    using std::filesystem::perms;
    for (const char* const folder : {"files", "empty"}) {
        std::filesystem::create_directory(file(folder));
    }
    // It serves as another user.
    for (const std::string& folder : {directory_.path().string(), file("files")}) {
        std::filesystem::permissions(folder, perms::owner_all | perms::group_read |
                                                 perms::group_exec | perms::others_read |
                                                 perms::others_exec);
    }
    if (!password.empty()) {
        directory_.write("passwords", password + "\n");
    }
    withRetries([&] {
        port_ = freePort();
        process_ = std::make_unique<ServerProcess>(
            "/usr/sbin/vsftpd",
            std::vector<std::string>{directory_.write("vsftpd.conf", configuration())},
            Ports{port_}, file("vsftpd.log"));
    });
}

std::string FtpDaemon::configuration() const {
    std::string text = CONFIGURATION;
    text += "listen_port=" + std::to_string(port_) + "\n";
    text += "anon_root=" + file("files") + "\n";
    text += "secure_chroot_dir=" + file("empty") + "\n";
    if (geteuid() != 0) {
        text += "run_as_launching_user=YES\n";
    }
    if (std::filesystem::exists(file("passwords"))) {
        text += "secure_email_list_enable=YES\nemail_password_file=" + file("passwords") + "\n";
    }
    return text;
}

void FtpDaemon::write(const std::string& name, const std::string& content) const {
    directory_.write("files/" + name, content);
}

std::string FtpDaemon::url(const std::string& path) const {
    return "ftp://127.0.0.1:" + std::to_string(port_) + path;
}

}  // namespace intake
