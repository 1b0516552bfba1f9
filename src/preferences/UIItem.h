// Position and state of one window.
#pragma once

#include "preferences/stored_item.h"

namespace vela {

class UIItemFields : public _UIItem {
  public:
    using Interface = _UIItem;

    HRESULT STDMETHODCALLTYPE get_ScreenWxH(BSTR* result) override { return give(result, screen_); }
    HRESULT STDMETHODCALLTYPE put_ScreenWxH(BSTR value) override { return take(screen_, value); }
    HRESULT STDMETHODCALLTYPE get_Width(LONG* result) override { return give(result, width_); }
    HRESULT STDMETHODCALLTYPE put_Width(LONG value) override { return take(width_, value); }
    HRESULT STDMETHODCALLTYPE get_Height(LONG* result) override { return give(result, height_); }
    HRESULT STDMETHODCALLTYPE put_Height(LONG value) override { return take(height_, value); }
    HRESULT STDMETHODCALLTYPE get_Left(LONG* result) override { return give(result, left_); }
    HRESULT STDMETHODCALLTYPE put_Left(LONG value) override { return take(left_, value); }
    HRESULT STDMETHODCALLTYPE get_Top(LONG* result) override { return give(result, top_); }
    HRESULT STDMETHODCALLTYPE put_Top(LONG value) override { return take(top_, value); }
    HRESULT STDMETHODCALLTYPE get_WindowState(LONG* result) override {
        return give(result, state_);
    }
    HRESULT STDMETHODCALLTYPE put_WindowState(LONG value) override { return take(state_, value); }
    HRESULT STDMETHODCALLTYPE get_Tag(BSTR* result) override { return give(result, tag_); }
    HRESULT STDMETHODCALLTYPE put_Tag(BSTR value) override { return take(tag_, value); }
    HRESULT STDMETHODCALLTYPE get_Group(BSTR* result) override { return give(result, group_); }
    HRESULT STDMETHODCALLTYPE put_Group(BSTR value) override { return takeUpper(group_, value); }
    HRESULT STDMETHODCALLTYPE get_Id(BSTR* result) override { return give(result, id_); }
    HRESULT STDMETHODCALLTYPE put_Id(BSTR value) override { return takeUpper(id_, value); }

  protected:
    std::wstring id_;
    std::wstring group_;

  private:
    std::wstring screen_;
    LONG width_ = 0;
    LONG height_ = 0;
    LONG left_ = 0;
    LONG top_ = 0;
    LONG state_ = 0;
    std::wstring tag_;
};

using UIItem = StoredItem<UIItemFields>;

}  // namespace vela
