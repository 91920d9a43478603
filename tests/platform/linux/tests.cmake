# What holds on Linux only.

# A library that brings the platform along and hides it, as the plugin does.
add_library(worker_library MODULE linux/worker_library.cpp)
target_link_libraries(worker_library PRIVATE intake_options intake_platform)
target_link_options(worker_library PRIVATE
    -Wl,--version-script=${CMAKE_CURRENT_SOURCE_DIR}/linux/worker_library.map)

intake_add_test(platform_linux_test
    SOURCES
        linux/LinuxClockTest.cpp
        linux/LinuxDiagnosticsTest.cpp
        linux/LinuxFilesTest.cpp
        linux/LinuxTextFilesTest.cpp
        linux/LinuxThreadsTest.cpp
        linux/make_pipe.cpp
    LINKS intake_platform ${CMAKE_DL_LIBS}
    LABELS platform)
target_compile_definitions(platform_linux_test PRIVATE
    WORKER_LIBRARY="$<TARGET_FILE:worker_library>")
add_dependencies(platform_linux_test worker_library)

# Bears the pipeline's label, so that ThreadSanitizer sees it too.
intake_add_test(abandonable_calls_test
    SOURCES linux/AbandonableCallsTest.cpp
    LINKS intake_platform
    LABELS pipeline)
