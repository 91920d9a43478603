# What a cross-build uses of the building machine: header-only libraries and GoogleTest's sources.
# Debian's headers come through a folder of their own, since the machine's other headers are not
# those of the system that is built for.

set(CROSS_HEADERS ${PROJECT_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${CROSS_HEADERS})
foreach(library rapidjson CLI)
    file(CREATE_LINK /usr/include/${library} ${CROSS_HEADERS}/${library} SYMBOLIC)
endforeach()

set(RAPIDJSON_INCLUDE_DIR ${CROSS_HEADERS} CACHE PATH "Where rapidjson/reader.h is")
add_library(CLI11::CLI11 INTERFACE IMPORTED GLOBAL)
target_include_directories(CLI11::CLI11 SYSTEM INTERFACE ${CROSS_HEADERS})

if(INTAKE_TESTS)
    set(INSTALL_GTEST OFF)
    add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endif()
