# Code that imports reaches a symbol through a pointer, __imp_symbol, which an import library brings
# along. Where the symbol is in the same program, as it is in tests, the pointer is written here;
# Visual C++'s linker makes it by itself.

set(pointers "")
foreach(names IN LISTS HOST_MODULES)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${names})
    file(STRINGS ${names} lines REGEX "^    ")
    foreach(line IN LISTS lines)
        string(REGEX MATCH "[^ ]+" symbol ${line})
        string(APPEND pointers "extern char ${symbol};\nextern const void* const __imp_${symbol};\n"
            "const void* const __imp_${symbol} = &${symbol};\n")
    endforeach()
endforeach()
file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/local_imports.cpp
    CONTENT "extern \"C\" {\n${pointers}}\n")
