#pragma once

#include "plugin/HostRecord.h"

namespace intake {

// How an instance comes to be and is bound to its field of the data store. The two ways differ on
// purpose, as the host's frame expects. Host's thread. An instance that cannot be made leaves the
// record's pointer null.

/// Binds the record's instance, made now if there is none yet. Whatever fails, the data store's
/// initialisation is pending afterwards.
void bind(HostRecord& record);

/// Makes and binds a new instance when the record's state asks for it, whether or not there was one
/// before; called by most entry points first.
void checkState(HostRecord& record);

/// The record's instance, after showing it its parameters; null when there is none.
Intake* instanceOf(HostRecord& record);

/// Carries out the data store's initialisation that binding has put off, if it is pending.
void finishInitialisation(const HostRecord& record);

}  // namespace intake
