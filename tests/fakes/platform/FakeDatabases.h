#pragma once

#include "platform/Database.h"
#include "platform/PlatformError.h"

namespace intake {

/// Databases for tests. Used on one thread; outlives what it makes.
class FakeDatabases final : public DatabaseServices {
public:
    std::unique_ptr<Connection> createConnection(const EndMark&) override {
        throw PlatformError(0x80040154, "Class not registered", "Fake", "No database is set up");
    }
};

}  // namespace intake
