// A record of one keyed value in several forms. It holds what it is given and does nothing else.
#pragma once

#include "contract.h"
#include "serialization/core/switch_string.h"

namespace vela {

class KeyValue final : public Object<KeyValue, _KeyValue> {
  public:
    KeyValue() = default;
    explicit KeyValue(const Switch& parsed)
        : key_(parsed.text), ref_(parsed.name), text_(parsed.value), number_(parsed.position) {}

    HRESULT STDMETHODCALLTYPE get_Key(BSTR* result) override { return give(result, key_); }
    HRESULT STDMETHODCALLTYPE put_Key(BSTR value) override { return take(key_, value); }
    HRESULT STDMETHODCALLTYPE get_Group(BSTR* result) override { return give(result, group_); }
    HRESULT STDMETHODCALLTYPE put_Group(BSTR value) override { return take(group_, value); }
    HRESULT STDMETHODCALLTYPE get_Ref(BSTR* result) override { return give(result, ref_); }
    HRESULT STDMETHODCALLTYPE put_Ref(BSTR value) override { return take(ref_, value); }
    HRESULT STDMETHODCALLTYPE get_StrValue(BSTR* result) override { return give(result, text_); }
    HRESULT STDMETHODCALLTYPE put_StrValue(BSTR value) override { return take(text_, value); }
    HRESULT STDMETHODCALLTYPE get_LngValue(LONG* result) override { return give(result, number_); }
    HRESULT STDMETHODCALLTYPE put_LngValue(LONG value) override { return take(number_, value); }
    HRESULT STDMETHODCALLTYPE get_ObjValue(IDispatch** result) override {
        return answer(result, [&] { return object_; });
    }
    HRESULT STDMETHODCALLTYPE putref_ObjValue(IDispatch* value) override {
        object_ = ComPtr<IDispatch>(value);
        return S_OK;
    }

  private:
    std::wstring key_;
    std::wstring group_;
    std::wstring ref_;
    std::wstring text_;
    LONG number_ = 0;
    ComPtr<IDispatch> object_;
};

}  // namespace vela
