// One parameter of a report view. Its identity is made of three of its fields and cannot be set.
#pragma once

#include "preferences/stored_item.h"

namespace vela {

class RPItemFields : public _RPItem {
  public:
    using Interface = _RPItem;

    HRESULT STDMETHODCALLTYPE get_View(BSTR* result) override { return give(result, view_); }
    HRESULT STDMETHODCALLTYPE put_View(BSTR value) override { return take(view_, value); }
    HRESULT STDMETHODCALLTYPE get_Field(BSTR* result) override { return give(result, field_); }
    HRESULT STDMETHODCALLTYPE put_Field(BSTR value) override { return take(field_, value); }
    HRESULT STDMETHODCALLTYPE get_Mode(SHORT* result) override { return give(result, mode_); }
    HRESULT STDMETHODCALLTYPE put_Mode(SHORT value) override { return take(mode_, value); }
    HRESULT STDMETHODCALLTYPE get_Value(BSTR* result) override { return give(result, value_); }
    HRESULT STDMETHODCALLTYPE put_Value(BSTR value) override { return take(value_, value); }
    HRESULT STDMETHODCALLTYPE get_Id(BSTR* result) override {
        return answer(result, [&] { return identity(); });
    }
    HRESULT STDMETHODCALLTYPE put_Id(BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_Group(BSTR* result) override { return give(result, group_); }
    HRESULT STDMETHODCALLTYPE put_Group(BSTR value) override { return takeUpper(group_, value); }

  protected:
    std::wstring identity() const { return view_ + L"@" + field_ + L"@" + std::to_wstring(mode_); }

    std::wstring group_;

  private:
    std::wstring view_;
    std::wstring field_;
    SHORT mode_ = 0;
    std::wstring value_;
};

class RPItem final : public Object<RPItem, RPItemFields, ItemIdentity> {
  private:
    std::wstring itemId() override { return identity(); }
    void setItemId(std::wstring_view) override {}
    std::wstring itemGroup() override { return group_; }
    void setItemGroup(std::wstring_view value) override { group_ = upperIdentity(value); }
};

}  // namespace vela
