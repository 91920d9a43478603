#pragma once

#include "platform/Database.h"
#include "platform/windows/com/ComFactory.h"

namespace intake {

/// Databases by ADO, on threads where COM is initialised. Nothing that blocks gives up early; it
/// ends with its thread.
class AdoDatabases final : public DatabaseServices {
public:
    explicit AdoDatabases(ComFactory create = CoCreateInstance) : create_(std::move(create)) {}

    std::unique_ptr<Connection> createConnection(const EndMark& endMark) override;

private:
    const ComFactory create_;
};

}  // namespace intake
