// How the objects of MSXML are made, and what a request is asked.

#include <gtest/gtest.h>

#include "platform/PlatformError.h"
#include "platform/windows/base/wide_text.h"
#include "platform/windows/com/BasicString.h"
#include "platform/windows/msxml/MsxmlServices.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/platform/windows/DispatchDouble.h"
#include "tests/support/AsWorker.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

const EndMark NEVER;

/// An object that has to be started, and then offers the system's own document.
class RunnableDouble final : public IRunnableObject {
public:
    explicit RunnableDouble(ComCalls& calls) : calls_(calls) { calls_.objectMade(); }
    ~RunnableDouble() { calls_.objectGone(); }

    STDMETHODIMP QueryInterface(REFIID identity, void** object) override {
        if (identity == IID_IRunnableObject) {
            AddRef();
            *object = this;
            return S_OK;
        }
        const HRESULT result = calls_.enter(
            identity == IID_DOM_DOCUMENT_2 ? "QueryInterface of a document" : "QueryInterface");
        return FAILED(result)
                   ? result
                   : CoCreateInstance(CLSID_DOM_DOCUMENT_60, nullptr, CLSCTX_ALL, identity, object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    STDMETHODIMP GetRunningClass(CLSID*) override { return E_NOTIMPL; }
    STDMETHODIMP Run(IBindCtx*) override { return calls_.enter("Run"); }
    STDMETHODIMP_(BOOL) IsRunning() override { return FALSE; }
    STDMETHODIMP LockRunning(BOOL, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP SetContainedObject(BOOL) override { return E_NOTIMPL; }

private:
    ComCalls& calls_;
    ULONG references_ = 1;
};

std::string show(const VARIANT& value) {
    switch (value.vt) {
        case VT_BSTR:
            return toUtf8({value.bstrVal, SysStringLen(value.bstrVal)});
        case VT_BOOL:
            return value.boolVal == VARIANT_FALSE ? "false" : "true";
        case VT_ERROR:
            return value.scode == DISP_E_PARAMNOTFOUND ? "(missing)" : "(error)";
        default:
            return "(other)";
    }
}

class RequestDouble final : public DispatchDouble<IXMLHTTPRequest> {
public:
    explicit RequestDouble(ComCalls& calls) : DispatchDouble(calls, IID_XML_HTTP_REQUEST) {}

    STDMETHODIMP open(BSTR method, BSTR url, VARIANT asynchronous, VARIANT user,
                      VARIANT password) override {
        return enter("open " + toUtf8(method) + " " + toUtf8(url) + " " + show(asynchronous) + " " +
                     show(user) + " " + show(password));
    }
    STDMETHODIMP setRequestHeader(BSTR name, BSTR value) override {
        return enter("setRequestHeader |" + toUtf8(name) + "|" + toUtf8(value) + "|");
    }
    STDMETHODIMP send(VARIANT body) override { return enter("send " + show(body)); }
    STDMETHODIMP get_responseText(BSTR* body) override {
        const HRESULT result = enter("responseText");
        *body = FAILED(result) ? nullptr : BasicString("<a>\xC3\xA9</a>").release();
        return result;
    }

    STDMETHODIMP getResponseHeader(BSTR, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP getAllResponseHeaders(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP abort() override { return E_NOTIMPL; }
    STDMETHODIMP get_status(long*) override { return E_NOTIMPL; }
    STDMETHODIMP get_statusText(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_responseXML(IDispatch**) override { return E_NOTIMPL; }
    STDMETHODIMP get_responseBody(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP get_responseStream(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP get_readyState(long*) override { return E_NOTIMPL; }
    STDMETHODIMP put_onreadystatechange(IDispatch*) override { return E_NOTIMPL; }
};

class Msxml : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(calls_.living(), 0); }

    /// Notes what is made; a request, and a document for a file, are stand-ins.
    HRESULT make(REFCLSID what, DWORD context, REFIID identity, void** made) {
        const bool isRequest = what == CLSID_XML_HTTP_60 && identity == IID_XML_HTTP_REQUEST;
        const bool isDocument = what == CLSID_DOM_DOCUMENT_60 && identity == IID_DOM_DOCUMENT_2;
        const bool isUnknown = what == CLSID_DOM_DOCUMENT_60 && identity == IID_IUnknown;
        const HRESULT result = calls_.enter(std::string("make ") +
                                            (isRequest    ? "a request"
                                             : isDocument ? "a document"
                                             : isUnknown  ? "an object"
                                                          : "?") +
                                            (context == CLSCTX_ALL             ? " anywhere"
                                             : context == CLSCTX_INPROC_SERVER ? " in process"
                                                                               : " ?"));
        if (FAILED(result)) {
            return result;
        }
        if (isRequest) {
            *made = static_cast<IXMLHTTPRequest*>(new RequestDouble(calls_));
        } else if (isUnknown) {
            *made = static_cast<IUnknown*>(new RunnableDouble(calls_));
        } else {
            return CoCreateInstance(what, nullptr, context, identity, made);
        }
        return S_OK;
    }

    std::unique_ptr<XmlDocument> document(XmlSource source) {
        return services_.createDocument(TextEncoding::UTF8, source, NEVER);
    }

    /// A whole request for a document; its text.
    std::string fetch(const std::string* user, const std::string* password) {
        const auto request = services_.createRequest(connections_, NEVER);
        const auto into = document(XmlSource::RESPONSE);
        request->open("http://feeds.example/a", user, password);
        request->setHeader("X-Desk", " sport");
        request->send();
        request->loadInto(*into);
        std::string text;
        into->appendText(into->rootElement(), text);
        return text;
    }

    const AsWorker worker_;
    ComCalls calls_;
    FakeConnections connections_;
    MsxmlServices services_{[this](REFCLSID what, IUnknown*, DWORD context, REFIID identity,
                                   void** made) { return make(what, context, identity, made); }};
};

TEST_F(Msxml, MakesADocumentForAFileAnywhereAndStartsIt) {
    const TempDirectory directory;
    EXPECT_TRUE(document(XmlSource::LOCAL_FILE)->loadFile(directory.write("a.xml", "<a/>")));
    EXPECT_EQ(calls_.text(), "make an object anywhere\nRun\nQueryInterface of a document\n");
}

TEST_F(Msxml, MakesADocumentForAResponseInProcess) {
    EXPECT_TRUE(document(XmlSource::RESPONSE)->loadText("<a/>"));
    EXPECT_EQ(calls_.text(), "make a document in process\n");
}

TEST_F(Msxml, DocumentsWaitForWhatTheyLoadAndTakeItAsItIs) {
    for (const bool isFile : {true, false}) {
        ComPointer<IXMLDOMDocument2> made;
        MsxmlServices services(
            [&](REFCLSID what, IUnknown* outer, DWORD context, REFIID identity, void** out) {
                const HRESULT result = CoCreateInstance(what, outer, context, identity, out);
                static_cast<IUnknown*>(*out)->QueryInterface(IID_DOM_DOCUMENT_2, made.outAny());
                made->put_async(VARIANT_TRUE);
                made->put_validateOnParse(VARIANT_TRUE);
                made->put_resolveExternals(VARIANT_TRUE);
                return result;
            });
        const auto document = services.createDocument(
            TextEncoding::UTF8, isFile ? XmlSource::LOCAL_FILE : XmlSource::RESPONSE, NEVER);
        VARIANT_BOOL async = VARIANT_TRUE, validates = VARIANT_TRUE, resolves = VARIANT_TRUE;
        EXPECT_EQ(made->get_async(&async), S_OK);
        EXPECT_EQ(made->get_validateOnParse(&validates), S_OK);
        EXPECT_EQ(made->get_resolveExternals(&resolves), S_OK);
        EXPECT_EQ(async, VARIANT_FALSE);
        EXPECT_EQ(validates, VARIANT_FALSE);
        EXPECT_EQ(resolves, VARIANT_FALSE);
    }
}

TEST_F(Msxml, ARequestIsSynchronousAndHasNeitherCredentialsNorABody) {
    EXPECT_EQ(fetch(nullptr, nullptr), "\xC3\xA9");
    EXPECT_EQ(calls_.text(),
              "make a request in process\n"
              "make a document in process\n"
              "open GET http://feeds.example/a false (missing) (missing)\n"
              "setRequestHeader |X-Desk| sport|\n"
              "send (missing)\n"
              "responseText\n");
}

TEST_F(Msxml, ARequestHasItsCredentialsAsTexts) {
    const std::string user = "desk";
    const std::string password;
    fetch(&user, &password);
    EXPECT_NE(calls_.text().find("\nopen GET http://feeds.example/a false desk \n"),
              std::string::npos)
        << calls_.text();
}

TEST_F(Msxml, EveryCallThatFailsIsThrownAndGivesEverythingBack) {
    const auto failureOf = [&](int number, const auto& step) {
        calls_ = ComCalls();
        calls_.failAt(number);
        try {
            step();
            ADD_FAILURE() << "nothing is thrown by call " << number;
        } catch (const PlatformError& error) {
            EXPECT_EQ(static_cast<HRESULT>(error.code()), ComCalls::FAILURE) << number;
        }
        EXPECT_EQ(calls_.count(), number);
        EXPECT_EQ(calls_.living(), 0) << number;
    };
    for (int number = 1; number <= 3; ++number) {
        failureOf(number, [&] { document(XmlSource::LOCAL_FILE); });
    }
    for (int number = 1; number <= 6; ++number) {
        failureOf(number, [&] { fetch(nullptr, nullptr); });
    }
}

}  // namespace
}  // namespace intake
