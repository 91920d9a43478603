# The modules in which a plugin looks for its imports, Lumo.exe and CobaltLib.dll, for a host that
# bears another name: each only says that what it exports is to be found in the host's executable.

function(workbench_add_host_modules host)
    foreach(names IN LISTS HOST_MODULES)
        get_filename_component(module ${names} NAME_WE)
        set(forwards ${CMAKE_CURRENT_BINARY_DIR}/${host}-${module}.def)
        write_forwards(${names} ${forwards} $<TARGET_FILE_NAME:${host}>)

        add_library(${host}_${module} MODULE
            ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/no_code.cpp ${forwards})
        file(STRINGS ${names} library REGEX "^LIBRARY")
        string(REGEX REPLACE "LIBRARY +\"(.*)\"" "\\1" library "${library}")
        get_filename_component(suffix ${library} LAST_EXT)
        set_target_properties(${host}_${module} PROPERTIES
            PREFIX "" OUTPUT_NAME ${module} SUFFIX ${suffix}
            LIBRARY_OUTPUT_DIRECTORY $<TARGET_FILE_DIR:${host}>)
        if(MSVC)
            target_link_options(${host}_${module} PRIVATE /NOENTRY)
        else()
            target_link_options(${host}_${module} PRIVATE -nostdlib -Wl,--entry=0)
        endif()
        add_dependencies(${host} ${host}_${module})
    endforeach()
endfunction()

# Writes each name of a list with the module in which it is.
function(write_forwards names forwards module)
    file(READ ${names} text)
    string(REGEX REPLACE "\n    ([^ \n]+)" "\n    \\1=\"${module}\".\\1" text "${text}")
    file(GENERATE OUTPUT ${forwards} CONTENT "${text}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${names})
endfunction()
