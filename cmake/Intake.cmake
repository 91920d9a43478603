# What all our targets share: the include root, the warnings, the sanitizers.

find_package(Threads REQUIRED)

# ./run builds once more what ./test has built already.
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(intake_options INTERFACE)
target_include_directories(intake_options INTERFACE ${PROJECT_SOURCE_DIR})
if(MSVC)
    target_compile_options(intake_options INTERFACE /W4 /WX /permissive- /utf-8 /EHsc)
else()
    target_compile_options(intake_options INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
        # GCC 12 sees overlaps in appends of the standard library that are none.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endif()
target_link_libraries(intake_options INTERFACE Threads::Threads)
if(WIN32)
    # Windows 7 and later; only what is asked for, and none of the macros that hide std::min.
    target_compile_definitions(intake_options INTERFACE
        _WIN32_WINNT=0x0601 WIN32_LEAN_AND_MEAN NOMINMAX)
endif()
if(MINGW)
    target_compile_options(intake_options INTERFACE -Wa,-mbig-obj)
endif()

if(INTAKE_SANITIZE)
    add_compile_options(-fsanitize=${INTAKE_SANITIZE} -fno-sanitize-recover=all
        -fno-omit-frame-pointer
        # What a sanitizer inserts hides initialisations and sizes from GCC.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
        $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds>
        $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow>
        # RapidJSON offsets null pointers, by which nothing is reached.
        $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=pointer-overflow>)
    add_link_options(-fsanitize=${INTAKE_SANITIZE})
endif()

# Reading headers is most of what it takes to compile a source. So those of tests are compiled some at a time,
# and all where CMAKE_UNITY_BUILD says so; elsewhere a missing #include shows. Which of them CMake joins changes
# with each new file, so sources that define the names of others are named here, and compiled by themselves.
function(intake_compile_alone)
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# A library of ours: intake_add_library(name SOURCES ... LINKS ...)
function(intake_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC intake_options ${ARG_LINKS})
endfunction()

# How the tests' code is compiled, since building it costs far more than running it: not optimised, some
# sources at a time, and all with one compiled header, for which libraries are built with the flags of executables.
function(intake_set_test_flags target)
    target_link_libraries(${target} PRIVATE intake_options GTest::gtest)
    target_compile_options(${target} PRIVATE $<IF:$<BOOL:${MSVC}>,/Od,-O0>)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
    # A test's class has no name outside of its source, which joining takes for a header.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    if(INTAKE_SANITIZE)
        # Undefined behaviour is looked for in what is tested; to look for it in the tests too would
        # double the time that they take to compile.
        target_compile_options(${target} PRIVATE -fno-sanitize=undefined)
    endif()
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL EXECUTABLE)
        set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
        target_compile_options(${target} PRIVATE ${CMAKE_CXX_COMPILE_OPTIONS_PIE})
    endif()
endfunction()

# The header that all tests include, compiled.
function(intake_add_test_header)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/test_header.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(test_header OBJECT ${source})
    intake_set_test_flags(test_header)
    target_precompile_headers(test_header PRIVATE <gtest/gtest.h>)
endfunction()

function(intake_compile_for_tests target)
    intake_set_test_flags(${target})
    if(MSVC)
        # It wants the same definitions wherever a compiled header is used.
        target_precompile_headers(${target} PRIVATE <gtest/gtest.h>)
    else()
        target_precompile_headers(${target} REUSE_FROM test_header)
    endif()
endfunction()

# What tests share: intake_add_test_library(name SOURCES ... [LINKS ...])
function(intake_add_test_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC intake_options ${ARG_LINKS})
    intake_compile_for_tests(${name})
endfunction()

# A program of the tests' code: intake_add_test_program(name SOURCES ... LINKS ...)
function(intake_add_test_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS})
    intake_compile_for_tests(${name})
endfunction()

# A test program of ours, each of its cases a test of CTest (the program as a whole where it is
# cross-compiled). For every label there is a target
# tests_<label> that builds the programs which bear it:
# intake_add_test(name SOURCES ... LINKS ... [LABELS ...])
function(intake_add_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;LABELS" ${ARGN})
    intake_add_test_program(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS} GTest::gtest_main)
    if(CMAKE_CROSSCOMPILING)
        add_wine_test(${name} "${ARG_LABELS}")
    else()
        set(leaks ${PROJECT_SOURCE_DIR}/tests/known_leaks.txt)
        gtest_discover_tests(${name}
            WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
            DISCOVERY_TIMEOUT 120
            PROPERTIES TIMEOUT 600 LABELS "${ARG_LABELS}"
                ENVIRONMENT "LSAN_OPTIONS=print_suppressions=0:suppressions=${leaks}")
    endif()
    foreach(label IN LISTS ARG_LABELS)
        if(NOT TARGET tests_${label})
            add_custom_target(tests_${label})
        endif()
        add_dependencies(tests_${label} ${name})
    endforeach()
endfunction()

# The program as one test, since starting Wine costs more than most of the cases.
function(add_wine_test name labels)
    set(exceptions ${PROJECT_SOURCE_DIR}/tests/wine_exceptions.txt)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${exceptions})
    file(STRINGS ${exceptions} rows REGEX "^${name} ")
    list(TRANSFORM rows REPLACE "^[^ ]+ ([^ ]+) = .*" "\\1")
    list(JOIN rows ":" left_out)

    add_test(NAME ${name}
        COMMAND ${PROJECT_SOURCE_DIR}/tests/under_wine.py $<TARGET_FILE:${name}>
            --gtest_filter=-${left_out}
        WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
    # Above the limit that under_wine.py sets, which says more.
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 LABELS "${labels}")
endfunction()
