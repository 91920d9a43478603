#pragma once

namespace intake {

/// Thrown where a call has led the host to delete the instance that made it: nothing of the
/// instance, nor of its record, may be touched any more. The entry points end with it, silently.
struct InstanceGone {};

}  // namespace intake
