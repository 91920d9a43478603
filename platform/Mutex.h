#pragma once

namespace intake {

/// A mutex that the thread which holds it may lock again: an answer that is being delivered may
/// lead the host back into the plugin. Destroying it closes it; nobody may hold it then.
class Mutex {
public:
    virtual ~Mutex() = default;

    /// Waits without a time-out. False when the wait itself failed; the mutex is then not held.
    virtual bool lock() = 0;

    /// Takes the mutex if that needs no waiting. True when it is now held.
    virtual bool tryLock() = 0;

    /// Undoes one successful lock or tryLock of this thread.
    virtual void unlock() = 0;
};

}  // namespace intake
