// What tests of late-bound calls share: arrays of variants, and objects as scripts make them.
#pragma once

#include <functional>

#include "support/support.h"

namespace vela::test {

inline Called callWith(IDispatch* object, const wchar_t* name,
                       const std::vector<Variant>& arguments) {
    return call(object, name, {arguments.begin(), arguments.end()});
}

// A one-dimensional array of variants from `first` on.
inline Variant arrayOf(const std::vector<Variant>& elements, LONG first = 0) {
    Variant array;
    array.parray = SafeArrayCreateVector(VT_VARIANT, first, static_cast<ULONG>(elements.size()));
    array.vt = VT_ARRAY | VT_VARIANT;
    for (const Variant& element : elements) {
        SafeArrayPutElement(array.parray, &first, const_cast<Variant*>(&element));
        ++first;
    }
    return array;
}

using Invoked = std::function<HRESULT(DISPID id, WORD flags, DISPPARAMS& call, VARIANT* result,
                                      EXCEPINFO* exception)>;

// An object whose members are one function; `Face` is IDispatch or derives from it. Counts as a
// live object.
template <class Face>
class LateObjectOf : public Face {
  public:
    LateObjectOf() { ++liveObjects; }
    virtual ~LateObjectOf() { --liveObjects; }

    IID face = IID_IDispatch;
    std::vector<const wchar_t*> names;  // numbered from 0
    Invoked invoked;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        *result = id == IID_IUnknown || id == IID_IDispatch || id == face ? this : nullptr;
        if (*result) AddRef();
        return *result ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* asked, UINT, LCID,
                                            DISPID* ids) override {
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (_wcsicmp(asked[0], names[i]) == 0) return *ids = static_cast<DISPID>(i), S_OK;
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* call,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override {
        return invoked ? invoked(id, flags, *call, result, exception) : S_OK;
    }

  private:
    ULONG references_ = 1;
};
using LateObject = LateObjectOf<IDispatch>;  // nothing but IDispatch

inline bool sameObject(IUnknown* left, IUnknown* right) {
    ComPtr<IUnknown> identities[2];
    EXPECT_EQ(left->QueryInterface(IID_PPV_ARGS(&identities[0])), S_OK);
    EXPECT_EQ(right->QueryInterface(IID_PPV_ARGS(&identities[1])), S_OK);
    return identities[0].Get() == identities[1].Get();
}

// Connects `heard` to an object's events, until the object dies.
inline void listen(IUnknown* source, const IID& events, Invoked heard) {
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> point;
    const auto sink = adopted(new LateObject);
    sink->invoked = std::move(heard);
    DWORD cookie = 0;
    ASSERT_EQ(source->QueryInterface(IID_PPV_ARGS(&container)), S_OK);
    ASSERT_EQ(container->FindConnectionPoint(events, &point), S_OK);
    ASSERT_EQ(point->Advise(sink.Get(), &cookie), S_OK);
}

}  // namespace vela::test
