// A default path, for a file dialog or a kind of file.
#pragma once

#include "preferences/stored_item.h"

namespace vela {

class DPItemFields : public _DPItem {
  public:
    using Interface = _DPItem;

    HRESULT STDMETHODCALLTYPE get_Path(BSTR* result) override { return give(result, path_); }
    HRESULT STDMETHODCALLTYPE put_Path(BSTR value) override { return take(path_, value); }
    HRESULT STDMETHODCALLTYPE get_File(BSTR* result) override { return give(result, file_); }
    HRESULT STDMETHODCALLTYPE put_File(BSTR value) override { return take(file_, value); }
    HRESULT STDMETHODCALLTYPE get_Ext(BSTR* result) override { return give(result, ext_); }
    HRESULT STDMETHODCALLTYPE put_Ext(BSTR value) override { return take(ext_, value); }
    HRESULT STDMETHODCALLTYPE get_Group(BSTR* result) override { return give(result, group_); }
    HRESULT STDMETHODCALLTYPE put_Group(BSTR value) override { return takeUpper(group_, value); }
    HRESULT STDMETHODCALLTYPE get_Id(BSTR* result) override { return give(result, id_); }
    HRESULT STDMETHODCALLTYPE put_Id(BSTR value) override { return takeUpper(id_, value); }

  protected:
    std::wstring id_;
    std::wstring group_;

  private:
    std::wstring path_;
    std::wstring file_;
    std::wstring ext_;
};

using DPItem = StoredItem<DPItemFields>;

}  // namespace vela
