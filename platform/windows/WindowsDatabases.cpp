#include "platform/windows/WindowsDatabases.h"

#include "platform/PlatformError.h"

namespace intake {

std::unique_ptr<Connection> WindowsDatabases::createConnection(const EndMark&) {
    throw PlatformError(0x80040154, "Class not registered", "Intake",
                        "There are no databases on this system yet");
}

}  // namespace intake
