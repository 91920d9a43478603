// A module that only forwards has no code of its own.
