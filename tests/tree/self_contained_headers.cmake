# self_contained_headers(name DIRECTORIES ... LINKS ...)
# Compiles every header below the directories as the only include of a source file, so that each
# brings along whatever it needs. The folders of other operating systems are left out, and the headers
# with a source file of their own, which is held to include them first.
function(self_contained_headers name)
    cmake_parse_arguments(ARG "" "" "DIRECTORIES;LINKS" ${ARGN})
    if(WIN32)
        # Nor are the formats whose libraries are there for Linux only.
        set(other_systems "/linux/|^formats/(workbook|xml)/")
    else()
        set(other_systems "/windows/")
    endif()

    set(sources)
    foreach(directory IN LISTS ARG_DIRECTORIES)
        file(GLOB_RECURSE headers CONFIGURE_DEPENDS
            RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/${directory}/*.h)
        list(FILTER headers EXCLUDE REGEX ${other_systems})
        foreach(header IN LISTS headers)
            cmake_path(REPLACE_EXTENSION header .cpp OUTPUT_VARIABLE own_source)
            if(EXISTS ${PROJECT_SOURCE_DIR}/${own_source})
                continue()
            endif()
            set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}/${header}.cpp)
            file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\"\n")
            list(APPEND sources ${source})
        endforeach()
    endforeach()

    add_library(${name} OBJECT ${sources})
    target_link_libraries(${name} PRIVATE intake_options ${ARG_LINKS})
endfunction()
