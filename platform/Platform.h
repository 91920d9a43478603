#pragma once

#include "platform/Clock.h"
#include "platform/Database.h"
#include "platform/Diagnostics.h"
#include "platform/Files.h"
#include "platform/HtmlDocument.h"
#include "platform/HttpClient.h"
#include "platform/TextFiles.h"
#include "platform/Threads.h"
#include "platform/XmlDocument.h"

namespace intake {

/// The operating system as the plugin sees it: one factory per kind of service. It only holds them;
/// each class takes the ones that it needs by its constructor, so that tests can hand it others.
struct Platform {
    Clock& clock;
    Threads& threads;
    Files& files;
    TextFiles& textFiles;
    Diagnostics& diagnostics;
    HttpClients& http;
    XmlServices& xml;
    HtmlServices& html;
    DatabaseServices& databases;
};

/// The services of the system that the library was built for. Never destroyed, so that a worker
/// that outlives the host's shutdown still has them.
const Platform& systemPlatform();

}  // namespace intake
