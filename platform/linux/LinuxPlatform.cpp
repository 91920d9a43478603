#include "platform/Platform.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxDiagnostics.h"
#include "platform/linux/LinuxFiles.h"
#include "platform/linux/LinuxTextFiles.h"
#include "platform/linux/LinuxThreads.h"
#include "platform/linux/ProviderConnection.h"
#include "platform/linux/curl/CurlHttpClient.h"
#include "platform/linux/html/LinuxHtmlServices.h"
#include "platform/linux/xml/LinuxXmlServices.h"

namespace intake {

const Platform& systemPlatform() {
    static const Platform* const platform =
        new Platform{*new LinuxClock,       *new LinuxThreads,      *new LinuxFiles,
                     *new LinuxTextFiles,   *new LinuxDiagnostics,  *new CurlHttpClients,
                     *new LinuxXmlServices, *new LinuxHtmlServices, *new LinuxDatabases};
    return *platform;
}

}  // namespace intake
