// Interfaces as their tables of methods, in C, so that only the methods that are called need be
// written.
#define CINTERFACE

#include "tests/platform/windows/WatchedMsxml.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "platform/windows/base/wide_text.h"
#include "platform/windows/msxml/msxml.h"
#include "tests/platform/windows/method_table.h"

namespace intake {

namespace {

// The tables of methods are at the end.
const void* elementMethods();
const void* methodsFor(IXMLDOMNode*);
const void* methodsFor(IXMLDOMElement*);
const void* methodsFor(IXMLDOMNodeList*);
const void* methodsFor(IXMLDOMParseError*);

template <class Self>
WatchedMsxml::Object& objectOf(Self* self) {
    return *reinterpret_cast<WatchedMsxml::Object*>(self);
}

template <class Self>
Self* realOf(Self* self) {
    return reinterpret_cast<Self*>(objectOf(self).real);
}

// How arguments are noted, and how they are passed on.

std::string shown(BSTR text) {
    return " " + toUtf8({text, SysStringLen(text)});
}
std::string shown(const VARIANT& value) {
    return value.vt == VT_BSTR ? shown(value.bstrVal) : " ?";
}
std::string shown(VARIANT_BOOL value) {
    return value == VARIANT_FALSE ? " false" : " true";
}
std::string shown(long position) {
    return " " + std::to_string(position);
}
template <class Other>
std::string shown(Other*) {
    return "";
}

template <class Argument>
Argument passedOn(Argument argument) {
    return argument;
}
IXMLDOMNode* passedOn(IXMLDOMNode* node) {
    return realOf(node);
}

// What a call returned through an argument: objects become watched ones.

template <class Argument>
void watchResult(WatchedMsxml&, Argument) {}

template <class Interface>
requires requires(Interface* object) {
    methodsFor(object);
}
void watchResult(WatchedMsxml& owner, Interface** result) {
    if (result != nullptr && *result != nullptr) {
        *result = reinterpret_cast<Interface*>(
            owner.watch(reinterpret_cast<IUnknown*>(*result), methodsFor(*result)));
    }
}

// Methods of every object.

HRESULT STDMETHODCALLTYPE queryInterface(IUnknown* self, REFIID identity, void** out) {
    *out = nullptr;
    WatchedMsxml& owner = objectOf(self).owner;
    if (identity != IID_DOM_ELEMENT) {
        ADD_FAILURE() << "an interface that nobody should ask for";
        return E_NOINTERFACE;
    }
    HRESULT result = owner.calls.enter("QueryInterface");
    if (SUCCEEDED(result)) {
        IUnknown* const real = realOf(self);
        result = real->lpVtbl->QueryInterface(real, identity, out);
    }
    if (SUCCEEDED(result)) {
        *out = owner.watch(static_cast<IUnknown*>(*out), elementMethods());
    }
    return result;
}

ULONG STDMETHODCALLTYPE addRef(IUnknown* self) {
    return static_cast<ULONG>(++objectOf(self).references);
}

/// Also counts what is released too often.
ULONG STDMETHODCALLTYPE release(IUnknown* self) {
    WatchedMsxml::Object& object = objectOf(self);
    const long left = --object.references;
    if (left <= 0) {
        object.owner.calls.objectGone();
    }
    if (left == 0) {
        object.real->lpVtbl->Release(object.real);
    }
    return static_cast<ULONG>(left);
}

/// The name of a method, for a template's argument.
template <size_t SIZE>
struct Name {
    constexpr Name(const char (&text)[SIZE]) { std::copy_n(text, SIZE, characters.begin()); }
    std::array<char, SIZE> characters{};
};

/// A method that is noted and passed on.
template <class Methods, class Self, class... Arguments>
struct Method {
    using Pointer = HRESULT (STDMETHODCALLTYPE* Methods::*)(Self*, Arguments...);

    template <Name NAME, Pointer METHOD>
    static HRESULT STDMETHODCALLTYPE call(Self* self, Arguments... arguments) {
        WatchedMsxml::Object& object = objectOf(self);
        EXPECT_GT(object.references, 0) << "a call of what has been released";
        HRESULT result = object.owner.calls.enter(
            (std::string(NAME.characters.data()) + ... + shown(arguments)));
        if (SUCCEEDED(result)) {
            Self* const real = realOf(self);
            result = (real->lpVtbl->*METHOD)(real, passedOn(arguments)...);
        }
        if (SUCCEEDED(result)) {
            (watchResult(object.owner, arguments), ...);
        }
        return result;
    }
};

template <Name NAME, auto METHOD, class Methods, class Self, class... Arguments>
void watchMethod(Methods& table, HRESULT (STDMETHODCALLTYPE* Methods::*)(Self*, Arguments...)) {
    table.*METHOD = &Method<Methods, Self, Arguments...>::template call<NAME, METHOD>;
}

template <Name NAME, auto METHOD, class Methods>
void watchMethod(Methods& table) {
    watchMethod<NAME, METHOD>(table, METHOD);
}

// The tables of methods.

template <class Methods>
Methods bareMethods() {
    IUnknownVtbl common{};
    common.QueryInterface = &queryInterface;
    common.AddRef = &addRef;
    common.Release = &release;
    return methodTable<Methods>(common);
}

IXMLDOMNodeVtbl nodeTable() {
    using Node = IXMLDOMNodeVtbl;
    auto table = bareMethods<Node>();
    watchMethod<"nodeType", &Node::get_nodeType>(table);
    watchMethod<"nodeName", &Node::get_nodeName>(table);
    watchMethod<"text", &Node::get_text>(table);
    watchMethod<"put text", &Node::put_text>(table);
    watchMethod<"xml", &Node::get_xml>(table);
    watchMethod<"firstChild", &Node::get_firstChild>(table);
    watchMethod<"nextSibling", &Node::get_nextSibling>(table);
    watchMethod<"selectSingleNode", &Node::selectSingleNode>(table);
    watchMethod<"appendChild", &Node::appendChild>(table);
    watchMethod<"removeChild", &Node::removeChild>(table);
    return table;
}

/// An element is a node: its methods begin with those of a node.
IXMLDOMElementVtbl elementTable() {
    auto table = bareMethods<IXMLDOMElementVtbl>();
    const IXMLDOMNodeVtbl node = nodeTable();
    std::memcpy(&table, &node, sizeof(node));
    watchMethod<"getAttribute", &IXMLDOMElementVtbl::getAttribute>(table);
    return table;
}

IXMLDOMNodeListVtbl listTable() {
    auto table = bareMethods<IXMLDOMNodeListVtbl>();
    watchMethod<"length", &IXMLDOMNodeListVtbl::get_length>(table);
    watchMethod<"item", &IXMLDOMNodeListVtbl::get_item>(table);
    return table;
}

IXMLDOMParseErrorVtbl errorTable() {
    auto table = bareMethods<IXMLDOMParseErrorVtbl>();
    watchMethod<"reason", &IXMLDOMParseErrorVtbl::get_reason>(table);
    return table;
}

IXMLDOMDocument2Vtbl documentTable() {
    using Document = IXMLDOMDocument2Vtbl;
    auto table = bareMethods<Document>();
    watchMethod<"async", &Document::put_async>(table);
    watchMethod<"validateOnParse", &Document::put_validateOnParse>(table);
    watchMethod<"resolveExternals", &Document::put_resolveExternals>(table);
    watchMethod<"load", &Document::load>(table);
    watchMethod<"loadXML", &Document::loadXML>(table);
    watchMethod<"parseError", &Document::get_parseError>(table);
    watchMethod<"setProperty", &Document::setProperty>(table);
    watchMethod<"selectNodes", &Document::selectNodes>(table);
    watchMethod<"documentElement", &Document::get_documentElement>(table);
    watchMethod<"createElement", &Document::createElement>(table);
    return table;
}

const void* elementMethods() {
    static const auto methods = elementTable();
    return &methods;
}

const void* methodsFor(IXMLDOMElement*) {
    return elementMethods();
}

const void* methodsFor(IXMLDOMNode*) {
    static const auto methods = nodeTable();
    return &methods;
}

const void* methodsFor(IXMLDOMNodeList*) {
    static const auto methods = listTable();
    return &methods;
}

const void* methodsFor(IXMLDOMParseError*) {
    static const auto methods = errorTable();
    return &methods;
}

}  // namespace

IXMLDOMDocument2* WatchedMsxml::watch(IXMLDOMDocument2* document) {
    static const auto methods = documentTable();
    return reinterpret_cast<IXMLDOMDocument2*>(
        watch(reinterpret_cast<IUnknown*>(document), &methods));
}

WatchedMsxml::Object* WatchedMsxml::watch(IUnknown* real, const void* methods) {
    calls.objectMade();
    return &objects_.emplace_back(Object{methods, *this, real});
}

}  // namespace intake
