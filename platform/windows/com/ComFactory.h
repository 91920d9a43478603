#pragma once

#include <functional>

#include "platform/windows/com/com.h"

namespace intake {

/// Makes COM objects: CoCreateInstance, or what a test puts in its place.
using ComFactory = std::function<HRESULT(REFCLSID, IUnknown*, DWORD, REFIID, void**)>;

}  // namespace intake
