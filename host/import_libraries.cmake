# The import libraries of the modules that a plugin imports from, made from the lists beside this
# file. The C functions of Lumo.exe bear the same names for every compiler; the classes of
# CobaltLib.dll do not.

if(MSVC)
    set(cobalt_names CobaltLib.msvc.def)
else()
    set(cobalt_names CobaltLib.mingw.def)
endif()
set(HOST_MODULES
    ${CMAKE_CURRENT_SOURCE_DIR}/Lumo.def
    ${CMAKE_CURRENT_SOURCE_DIR}/${cobalt_names}
    CACHE INTERNAL "The exports of the modules that a plugin imports from")

foreach(names IN LISTS HOST_MODULES)
    get_filename_component(module ${names} NAME_WE)
    set(library ${CMAKE_CURRENT_BINARY_DIR}/${module}.lib)
    if(MSVC)
        set(make_library ${CMAKE_AR} /nologo /machine:x64 /def:${names} /out:${library})
    else()
        set(make_library ${CMAKE_DLLTOOL} --input-def ${names} --output-lib ${library})
    endif()
    add_custom_command(OUTPUT ${library} COMMAND ${make_library} DEPENDS ${names}
        COMMENT "Making the import library of ${module}" VERBATIM)
    list(APPEND libraries ${library})
endforeach()

add_custom_target(host_import_libraries DEPENDS ${libraries})
add_dependencies(intake_host_imports host_import_libraries)
target_link_libraries(intake_host_imports INTERFACE ${libraries})
