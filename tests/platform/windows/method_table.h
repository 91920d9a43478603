#pragma once

#include <cstring>
#include <vector>

#include "platform/windows/com/com.h"

namespace intake {

inline HRESULT STDMETHODCALLTYPE unusedMethod(IUnknown*) {
    return E_NOTIMPL;
}

/// A table of a COM interface's methods that all fail, but for those that every object has. For
/// sources that see interfaces as in C (CINTERFACE).
template <class Methods>
Methods methodTable(const IUnknownVtbl& common) {
    using Method = HRESULT(STDMETHODCALLTYPE*)(IUnknown*);
    static_assert(sizeof(Methods) % sizeof(Method) == 0);
    const std::vector<Method> filling(sizeof(Methods) / sizeof(Method), &unusedMethod);
    Methods methods;
    std::memcpy(&methods, filling.data(), sizeof(methods));
    std::memcpy(&methods, &common, sizeof(common));
    return methods;
}

}  // namespace intake
