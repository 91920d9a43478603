# Fails unless a shared library exports the plugin's entry points and nothing else.
#   cmake -DNM=nm -DLIBRARY=Intake.so -P check_exports.cmake
#   cmake -DOBJDUMP=objdump -DLIBRARY=Intake.dll -P check_exports.cmake

set(ENTRY_POINTS
    PLUGIN_AFTER_LOAD
    PLUGIN_CHANGED_CALLBACK
    PLUGIN_CLEANUP_FUNCTION
    PLUGIN_DISPATCHER_CALLBACK
    PLUGIN_EXEC_ACTION
    PLUGIN_EXEC_PER_FIELD
    PLUGIN_GUI_STATUS
    PLUGIN_INIT
    PLUGIN_INIT_FUNCTION
    PLUGIN_LOAD
    PLUGIN_NEW_GEOM)

if(LIBRARY MATCHES "\\.dll$")
    execute_process(
        COMMAND ${OBJDUMP} --private-headers ${LIBRARY}
        OUTPUT_VARIABLE headers
        COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE ".*Name Pointer\\] Table\n" "" names "${headers}")
    string(REGEX MATCHALL "\n?\t\\[[^\n]+" lines "${names}")
    list(TRANSFORM lines REPLACE "\n?\t\\[ *[0-9]+\\] " "" OUTPUT_VARIABLE exported)
else()
    execute_process(
        COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
        OUTPUT_VARIABLE symbols
        COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "([^ \n]+) [^\n]*\n" "\\1;" exported "${symbols}")
    list(REMOVE_ITEM exported "")
endif()
list(SORT exported)

if(NOT exported STREQUAL ENTRY_POINTS)
    message(FATAL_ERROR "${LIBRARY} exports\n  ${exported}\ninstead of\n  ${ENTRY_POINTS}")
endif()
