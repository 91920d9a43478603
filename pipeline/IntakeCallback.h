#pragma once

namespace intake {

/// The channel through which parameter values are pushed to an instance. Called on the host's
/// thread, since it writes into the host's record.
class IntakeCallback {
public:
    virtual ~IntakeCallback() = default;

    /// Applies a sequence of `KEY |value|` pairs with the keys FILENAME and SHEET; others are
    /// skipped. A value that does not fit its parameter is cut.
    virtual void onParameterUpdate(const char* text) = 0;

    /// Reserved by the interface.
    virtual void onReserved() = 0;
};

}  // namespace intake
