// Printer choices, as clients reach them.
#pragma once

#include "preferences/up_context.h"

namespace vela {

class UPPrinterUtil final : public Object<UPPrinterUtil, _UPPrinterUtil> {
  public:
    HRESULT STDMETHODCALLTYPE UISetPrintingPreferences(LONG window, SHORT type, BSTR reference,
                                                       _ISetPrinter** printer, SHORT* copies,
                                                       PrinterOrientation* orientation,
                                                       VARIANT_BOOL* overide,
                                                       VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE UsePrintingPreferences(SHORT type, BSTR reference,
                                                     _ISetPrinter** printer, SHORT* copies,
                                                     PrinterOrientation* orientation,
                                                     VARIANT_BOOL* overide,
                                                     VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE GetCopies(SHORT type, BSTR reference, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE GetPrinterDescription(SHORT type, BSTR reference,
                                                    BSTR* result) override;

    void setContext(std::shared_ptr<UPContext> context) { context_ = std::move(context); }

  private:
    std::shared_ptr<UPContext> context_;
};

}  // namespace vela
