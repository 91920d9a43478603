#include "workbench/cli/serve/RefusedLogins.h"

#include "workbench/probe/fetch/login.h"

namespace workbench {

namespace {

constexpr std::chrono::seconds kept{30};

}  // namespace

/// Commands say so in a sentence, which is looked for where they have not done what was asked.
void RefusedLogins::note(const std::string& login, const ChildAnswer& answer) {
    const std::string& told = answer.out.empty() ? answer.err : answer.out;
    if (answer.status == 0 || told.find(probe::notSentAgain) == std::string::npos) return;
    const std::lock_guard lock(mutex_);
    refused_[login] = clock_();
}

bool RefusedLogins::isRefused(const std::string& login) {
    const std::lock_guard lock(mutex_);
    std::erase_if(refused_,
                  [now = clock_()](const auto& each) { return now - each.second > kept; });
    return refused_.contains(login);
}

std::string loginOf(const probe::Settings& settings) {
    std::string login;
    for (const std::string* text :
         {&settings.filename, &settings.connStr, &settings.proxyUrl, &settings.userName,
          &settings.password, &settings.proxyUser, &settings.proxyPwd, &settings.customHeaders})
        login += *text + '\0';
    for (const bool isOn : {settings.useAuth, settings.enableProxy, settings.useCustomHeaders})
        login += isOn ? '1' : '0';
    return login;
}

}  // namespace workbench
