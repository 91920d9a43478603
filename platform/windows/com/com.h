#pragma once

// COM and OLE automation.

#include <windows.h>
// Builds on the former.
#include <ole2.h>
