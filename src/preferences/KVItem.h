// A key and its value. The key is the item's identity.
#pragma once

#include "preferences/stored_item.h"

namespace vela {

class KVItemFields : public _KVItem {
  public:
    using Interface = _KVItem;

    HRESULT STDMETHODCALLTYPE get_Value(BSTR* result) override { return give(result, value_); }
    HRESULT STDMETHODCALLTYPE put_Value(BSTR value) override { return take(value_, value); }
    HRESULT STDMETHODCALLTYPE get_Key(BSTR* result) override { return give(result, key_); }
    HRESULT STDMETHODCALLTYPE put_Key(BSTR value) override { return takeUpper(key_, value); }
    HRESULT STDMETHODCALLTYPE get_Group(BSTR* result) override { return give(result, group_); }
    HRESULT STDMETHODCALLTYPE put_Group(BSTR value) override { return takeUpper(group_, value); }

  protected:
    std::wstring key_;
    std::wstring group_;

  private:
    std::wstring value_;
};

// Its IUPItem properties go through the public ones, so they upper-case too.
class KVItem final : public Object<KVItem, KVItemFields, ItemIdentity> {
  private:
    std::wstring itemId() override { return key_; }
    void setItemId(std::wstring_view value) override { key_ = upperIdentity(value); }
    std::wstring itemGroup() override { return group_; }
    void setItemGroup(std::wstring_view value) override { group_ = upperIdentity(value); }
};

}  // namespace vela
