// What the example programs share: errors, texts, objects that are called back, and an apartment.
#pragma once

#include <windows.h>

#include <VelaUtil10.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <cstdio>
#include <string>

using Microsoft::WRL::ComPtr;

inline void check(HRESULT result) {
    if (FAILED(result)) throw result;
}

// A text as automation passes it.
class Text {
  public:
    explicit Text(const std::wstring& text = {}) : text_(SysAllocString(text.c_str())) {}
    ~Text() { SysFreeString(text_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    BSTR in() const { return text_; }
    // For a member that stores a new text here.
    BSTR* out() {
        SysFreeString(text_);
        text_ = nullptr;
        return &text_;
    }
    // For a member that takes this text and may store another one.
    BSTR* inOut() { return &text_; }

  private:
    BSTR text_;
};

// What an object that is only called back needs of automation. Nothing is counted: it must outlive
// whoever calls it.
template <class Interface>
class Callback : public Interface {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(Interface);
        *result = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    // Events arrive here, with their last argument first.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }
};

// Has an object's events go to a sink, as long as this lives.
template <class Events>
class Connection {
  public:
    Connection(IUnknown* source, Events& sink) {
        ComPtr<IConnectionPointContainer> container;
        check(source->QueryInterface(IID_PPV_ARGS(&container)));
        check(container->FindConnectionPoint(__uuidof(Events), &point_));
        check(point_->Advise(&sink, &cookie_));
    }
    ~Connection() { point_->Unadvise(cookie_); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

  private:
    ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

// Runs `body` in an apartment; the exit code of the program, 1 when it throws.
template <class Body>
int runInApartment(Body&& body) {
    HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(result)) return 1;
    try {
        body();
    } catch (HRESULT failure) {
        std::fprintf(stderr, "Failed with %08lX.\n", static_cast<unsigned long>(failure));
        result = failure;
    }
    CoUninitialize();
    return FAILED(result) ? 1 : 0;
}
