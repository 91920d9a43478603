#include "platform/Platform.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/WindowsDiagnostics.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsTextFiles.h"
#include "platform/windows/WindowsThreads.h"
#include "platform/windows/ado/AdoDatabases.h"
#include "platform/windows/mshtml/MshtmlServices.h"
#include "platform/windows/msxml/MsxmlServices.h"
#include "platform/windows/winhttp/WinHttpClient.h"

namespace intake {

const Platform& systemPlatform() {
    static const Platform* const platform =
        new Platform{*new WindowsClock,     *new WindowsThreads,     *new WindowsFiles,
                     *new WindowsTextFiles, *new WindowsDiagnostics, *new WinHttpClients,
                     *new MsxmlServices,    *new MshtmlServices,     *new AdoDatabases};
    return *platform;
}

}  // namespace intake
