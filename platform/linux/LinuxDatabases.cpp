#include "platform/linux/LinuxDatabases.h"

#include "platform/linux/ProviderConnection.h"

namespace intake {

std::unique_ptr<Connection> LinuxDatabases::createConnection(const EndMark& endMark) {
    return std::make_unique<ProviderConnection>(endMark);
}

}  // namespace intake
