#pragma once

#include "platform/windows/ado/ado.h"
#include "tests/platform/windows/ComCalls.h"

namespace intake {

/// An object of ADO that a test stands in for: counts its references, and knows no other interfaces
/// than its own. Destroyed by its last release.
template <class Interface>
class AdoDouble : public Interface {
public:
    AdoDouble(ComCalls& calls, REFIID identity) : calls_(calls), identity_(identity) {
        calls_.objectMade();
    }
    virtual ~AdoDouble() { calls_.objectGone(); }
    AdoDouble(const AdoDouble&) = delete;
    AdoDouble& operator=(const AdoDouble&) = delete;

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
