// The driver of MariaDB is not built for ThreadSanitizer, which misses how it locks its mutexes.

extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
    return "mutex:libmaodbc.so\n";
}
