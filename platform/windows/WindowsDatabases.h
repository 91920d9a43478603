#pragma once

#include "platform/Database.h"

namespace intake {

/// Databases by way of ADO.
class WindowsDatabases final : public DatabaseServices {
public:
    std::unique_ptr<Connection> createConnection(const EndMark& endMark) override;
};

}  // namespace intake
