# What holds on Windows only.

# A library that brings the platform along, as the plugin does.
add_library(worker_library MODULE windows/worker_library.cpp)
target_link_libraries(worker_library PRIVATE intake_options intake_platform)
set_target_properties(worker_library PROPERTIES PREFIX "")

intake_add_test(platform_windows_test
    SOURCES
        windows/WindowsFilesTest.cpp
        windows/WindowsThreadsTest.cpp
    LINKS intake_platform
    LABELS platform)
target_compile_definitions(platform_windows_test PRIVATE
    WORKER_LIBRARY="$<TARGET_FILE_NAME:worker_library>")
add_dependencies(platform_windows_test worker_library)

# Stand-ins for COM objects.
intake_add_test_library(com_test_support
    SOURCES
        windows/BigAllocations.cpp
        windows/ComCalls.cpp
    LINKS intake_platform)

intake_add_test(com_test
    SOURCES windows/com_test.cpp
    LINKS com_test_support
    LABELS platform)

intake_add_test(msxml_test
    SOURCES
        windows/WatchedMsxml.cpp
        windows/msxml_document_test.cpp
        windows/msxml_test.cpp
    LINKS com_test_support
    LABELS xml)

intake_add_test(ado_test
    SOURCES
        ../workbench/cobalt/show.cpp
        windows/ado/AdoDoubles.cpp
        windows/ado/AdoTest.cpp
        windows/ado/InMemoryTable.cpp
        windows/ado/adapter_test.cpp
        windows/ado/connections_test.cpp
        windows/ado/records_test.cpp
        windows/ado/values_test.cpp
    LINKS com_test_support fake_platform intake_sql workbench_cobalt
    LABELS sql)

# Wine's ADO reaches the ODBC data sources of its own host through MSDASQL.
if(CMAKE_CROSSCOMPILING)
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/odbc.ini
        "[intake-test]\nDriver=SQLite3\nDatabase=:memory:\n")
    set_tests_properties(ado_test PROPERTIES ENVIRONMENT
        "ODBCINI=${CMAKE_CURRENT_BINARY_DIR}/odbc.ini;INTAKE_ODBC_DATA_SOURCE=intake-test")
endif()

intake_add_test(ado_workers_test
    SOURCES windows/ado/workers_test.cpp
    LINKS intake_platform
    LABELS sql)

intake_add_test(mshtml_test
    SOURCES
        windows/mshtml/HtmlObject.cpp
        windows/mshtml/MshtmlTest.cpp
        windows/mshtml/OnePageServer.cpp
        windows/mshtml/PageDouble.cpp
        windows/mshtml/adapter_test.cpp
        windows/mshtml/urlmon_test.cpp
    LINKS com_test_support fake_platform intake_html ws2_32
    LABELS html)

# With functions of its own in the place of the system's.
intake_add_test(winhttp_test
    SOURCES
        windows/winhttp/WinHttpDouble.cpp
        windows/winhttp/failures_test.cpp
        windows/winhttp/proxies_test.cpp
        windows/winhttp/requests_test.cpp
        windows/winhttp/winhttp_functions.cpp
    LINKS fake_platform intake_pipeline
    LABELS http)
