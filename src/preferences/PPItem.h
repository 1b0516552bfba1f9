// A printer and its settings.
#pragma once

#include "preferences/stored_item.h"

namespace vela {

class PPItemFields : public _PPItem {
  public:
    using Interface = _PPItem;

    HRESULT STDMETHODCALLTYPE get_PaperBin(SHORT* result) override { return give(result, bin_); }
    HRESULT STDMETHODCALLTYPE put_PaperBin(SHORT value) override { return take(bin_, value); }
    HRESULT STDMETHODCALLTYPE get_PaperSize(SHORT* result) override { return give(result, size_); }
    HRESULT STDMETHODCALLTYPE put_PaperSize(SHORT value) override { return take(size_, value); }
    HRESULT STDMETHODCALLTYPE get_Orientation(PrinterOrientation* result) override {
        return give(result, orientation_);
    }
    HRESULT STDMETHODCALLTYPE put_Orientation(PrinterOrientation value) override {
        return take(orientation_, value);
    }
    HRESULT STDMETHODCALLTYPE get_Copies(SHORT* result) override { return give(result, copies_); }
    HRESULT STDMETHODCALLTYPE put_Copies(SHORT value) override { return take(copies_, value); }
    HRESULT STDMETHODCALLTYPE get_Group(BSTR* result) override { return give(result, group_); }
    HRESULT STDMETHODCALLTYPE put_Group(BSTR value) override { return takeUpper(group_, value); }
    HRESULT STDMETHODCALLTYPE get_Id(BSTR* result) override { return give(result, id_); }
    HRESULT STDMETHODCALLTYPE put_Id(BSTR value) override { return takeUpper(id_, value); }
    HRESULT STDMETHODCALLTYPE get_PrinterName(BSTR* result) override {
        return give(result, printer_);
    }
    HRESULT STDMETHODCALLTYPE put_PrinterName(BSTR value) override {
        return takeUpper(printer_, value);
    }

  protected:
    std::wstring id_;
    std::wstring group_;

  private:
    SHORT bin_ = 0;
    SHORT size_ = 0;
    PrinterOrientation orientation_ = Portrait;
    SHORT copies_ = 1;
    std::wstring printer_;
};

using PPItem = StoredItem<PPItemFields>;

}  // namespace vela
