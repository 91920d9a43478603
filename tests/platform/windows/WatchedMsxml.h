#pragma once

#include <deque>

#include "platform/windows/com/com.h"
#include "tests/platform/windows/ComCalls.h"

// Builds on COM.
#include <msxml2.h>

namespace intake {

/// Puts objects between the adapter and a document of the system's: each notes its calls, fails
/// where it is to fail, counts its references, and passes everything else on to the object of the
/// system's that it stands for. Used on one thread; outlives what it hands out.
class WatchedMsxml {
public:
    /// One object. Its layout is that of a COM object: what it begins with is its table of methods.
    struct Object {
        const void* methods;
        WatchedMsxml& owner;
        IUnknown* real;  // referred to as long as this one is
        long references = 1;
    };

    /// Takes over a reference to a document and returns one to the object before it.
    IXMLDOMDocument2* watch(IXMLDOMDocument2* document);

    /// Takes over a reference to an object whose interface has these methods.
    Object* watch(IUnknown* real, const void* methods);

    ComCalls calls;

private:
    std::deque<Object> objects_;  // also those that have been released
};

}  // namespace intake
