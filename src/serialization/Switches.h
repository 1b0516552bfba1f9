// Records in order, each found by its key; filled from a switch string, filtered by patterns.
#pragma once

#include "collections/core/keyed_collection.h"
#include "contract.h"

namespace vela {

class Switches final : public Object<Switches, _Switches> {
  public:
    HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** result) override;
    HRESULT STDMETHODCALLTYPE get_Count(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE Add(_KeyValue** itemInstance) override;
    HRESULT STDMETHODCALLTYPE Remove(VARIANT* indexOrInstance) override;
    HRESULT STDMETHODCALLTYPE get_Item(VARIANT* indexOrInstance, _KeyValue** result) override;
    HRESULT STDMETHODCALLTYPE Clear() override;
    HRESULT STDMETHODCALLTYPE FromString(BSTR switchString) override;
    HRESULT STDMETHODCALLTYPE FindByRef(BSTR ref, _Switches** result) override;
    HRESULT STDMETHODCALLTYPE FindByGroup(BSTR group, _Switches** result) override;

  private:
    using Entries = KeyedCollection<ComPtr<_KeyValue>>;
    using TextGetter = HRESULT (STDMETHODCALLTYPE _KeyValue::*)(BSTR*);

    // Throws Error 457 when the key is taken.
    void add(ComPtr<_KeyValue> record, std::wstring_view key);
    // The position that a record, a key or a number stands for; 0 or out of range when there is
    // none. Throws Error.
    std::size_t position(VARIANT* indexOrInstance);
    // The records whose text matches the pattern, both trimmed and upper-cased. Throws Error 93.
    ComPtr<Switches> matching(BSTR pattern, TextGetter get);

    Entries entries_;
};

}  // namespace vela
