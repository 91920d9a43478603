#pragma once

#include "platform/Database.h"

namespace intake {

/// Databases by way of the drivers that the user has, and workbooks. The connection string decides
/// when a connection is opened.
class LinuxDatabases final : public DatabaseServices {
public:
    std::unique_ptr<Connection> createConnection(const EndMark& endMark) override;
};

}  // namespace intake
