// Listens to the serializer: one field gets another name, one is left out, without a change to the
// object or to its list.
#include <windows.h>

#include <VelaUtil10.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <cstdio>
#include <cwchar>
#include <string>

using Microsoft::WRL::ComPtr;

namespace {

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
    BSTR* place() { return &text_; }

  private:
    BSTR text_;
};

void check(HRESULT result) {
    if (FAILED(result)) throw result;
}

// Receives the events of one serializer. It lives on the stack, longer than its connection.
class Renamer final : public IDispatch {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        const bool known =
            id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(__Serializer);
        *result = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    // Event 1 is Serializing(sender, thisObject, propertyName, PropertyValue, serializeAsType), all
    // by reference. Arguments come with the last one first.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* call, VARIANT*,
                                     EXCEPINFO*, UINT*) override {
        if (event != 1 || call->cArgs != 5) return S_OK;
        BSTR& name = *call->rgvarg[2].pbstrVal;
        LONG& kind = *call->rgvarg[0].plVal;
        if (std::wcscmp(name, L"path") == 0) SysReAllocString(&name, L"folder");
        if (std::wcscmp(name, L"Group") == 0) kind = SerializeAsNone;
        return S_OK;
    }
};

class Connection {
  public:
    Connection(IUnknown* source, IDispatch* sink) {
        ComPtr<IConnectionPointContainer> container;
        check(source->QueryInterface(IID_PPV_ARGS(&container)));
        check(container->FindConnectionPoint(__uuidof(__Serializer), &point_));
        check(point_->Advise(sink, &cookie_));
    }
    ~Connection() { point_->Unadvise(cookie_); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

  private:
    ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

ComPtr<_DPItem> makePath() {
    ComPtr<_DPItem> item;
    check(CoCreateInstance(__uuidof(DPItem), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&item)));
    check(item->put_Id(Text(L"exports").in()));
    check(item->put_Group(Text(L"sales").in()));
    check(item->put_Path(Text(L"C:\\Exports").in()));
    return item;
}

void show(const char* when, _Serializer* serializer, IDispatch* object) {
    Text list(L"@Id,@Path,/Group");
    Text xml;
    check(serializer->Serialize(&object, Text(L"Default").in(), list.place(), xml.out()));
    std::printf("%s: %ls\n", when, xml.in());
}

void run() {
    ComPtr<_Serializer> serializer;
    check(CoCreateInstance(__uuidof(Serializer), nullptr, CLSCTX_INPROC_SERVER,
                           IID_PPV_ARGS(&serializer)));
    const ComPtr<_DPItem> item = makePath();
    Renamer renamer;
    show("Before", serializer.Get(), item.Get());
    {
        const Connection connection(serializer.Get(), &renamer);
        show("Renamed", serializer.Get(), item.Get());
    }
    show("After", serializer.Get(), item.Get());
}

}  // namespace

int main() {
    HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(result)) return 1;
    try {
        run();
    } catch (HRESULT failure) {
        std::fprintf(stderr, "Failed with %08lX.\n", static_cast<unsigned long>(failure));
        result = failure;
    }
    CoUninitialize();
    return FAILED(result) ? 1 : 0;
}
