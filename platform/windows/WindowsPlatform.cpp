#include "platform/Platform.h"
#include "platform/windows/MsxmlServices.h"
#include "platform/windows/WinHttpClient.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/WindowsDatabases.h"
#include "platform/windows/WindowsDiagnostics.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsHtmlServices.h"
#include "platform/windows/WindowsThreads.h"

namespace intake {

const Platform& systemPlatform() {
    static const Platform* const platform = new Platform{
        *new WindowsClock,   *new WindowsThreads, *new WindowsFiles,        *new WindowsDiagnostics,
        *new WinHttpClients, *new MsxmlServices,  *new WindowsHtmlServices, *new WindowsDatabases};
    return *platform;
}

}  // namespace intake
