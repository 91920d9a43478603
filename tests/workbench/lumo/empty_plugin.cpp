// A library that exports nothing.
