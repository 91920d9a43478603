#pragma once

#include <cstdint>
#include <string>

#include "host/cobalt.h"

// How the arguments of a host call are written down: texts in quotes with line ends as \n, null
// pointers as null, objects and functions by their names.

std::string printed(const char* text);
std::string printed(const std::string& text);
std::string printed(int32_t number);
std::string printed(bool truth);
std::string printed(float number);
std::string printed(const char* const* entries);
std::string printed(Cobalt* store);
std::string printed(DataField* field);
std::string printed(DataVariableQuery* query);
std::string printed(DataCommandFunction command);
std::string printed(int32_t (*print)(const char*, ...));
std::string printed(int32_t (*print)(const wchar_t*, ...));
std::string printed(int32_t (*print)(const char*, va_list));
std::string printed(int32_t (*print)(const wchar_t*, va_list));
