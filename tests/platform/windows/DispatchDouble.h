#pragma once

#include "platform/windows/com/com.h"
#include "tests/platform/windows/ComCalls.h"

namespace intake {

/// An object of automation that a test stands in for: counts its references, and knows no other
/// interfaces than its own. Destroyed by its last release.
template <class Interface>
class DispatchDouble : public Interface {
public:
    DispatchDouble(ComCalls& calls, REFIID identity) : calls_(calls), identity_(identity) {
        calls_.objectMade();
    }
    virtual ~DispatchDouble() { calls_.objectGone(); }
    DispatchDouble(const DispatchDouble&) = delete;
    DispatchDouble& operator=(const DispatchDouble&) = delete;

    STDMETHODIMP QueryInterface(REFIID identity, void** object) override {
        *object = nullptr;
        if (identity != IID_IUnknown && identity != IID_IDispatch && identity != identity_) {
            return E_NOINTERFACE;
        }
        const HRESULT result = calls_.enter("QueryInterface");
        if (SUCCEEDED(result)) {
            AddRef();
            *object = static_cast<Interface*>(this);
        }
        return result;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        return E_NOTIMPL;
    }

protected:
    HRESULT enter(const std::string& call) { return calls_.enter(call); }

    ComCalls& calls_;

private:
    const IID identity_;
    ULONG references_ = 1;
};

}  // namespace intake
