// Listens to the serializer: one field gets another name, one is left out, without a change to the
// object or to its list.
#include <cwchar>

#include "client.h"

namespace {

// Receives the events of one serializer.
class Renamer final : public Callback<__Serializer> {
  public:
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
    check(serializer->Serialize(&object, Text(L"Default").in(), list.inOut(), xml.out()));
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
        const Connection<__Serializer> connection(serializer.Get(), renamer);
        show("Renamed", serializer.Get(), item.Get());
    }
    show("After", serializer.Get(), item.Get());
}

}  // namespace

int main() { return runInApartment(run); }
