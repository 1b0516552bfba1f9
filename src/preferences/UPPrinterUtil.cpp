#include "preferences/UPPrinterUtil.h"

namespace vela {

namespace {

PrintDefaults defaultsIn(const SHORT* copies, const PrinterOrientation* orientation,
                         const VARIANT_BOOL* overide) {
    return {copies ? *copies : SHORT{0}, orientation ? static_cast<long>(*orientation) : 0,
            overide && isTrue(*overide)};
}

}  // namespace

HRESULT UPPrinterUtil::UISetPrintingPreferences(LONG window, SHORT type, BSTR reference,
                                                _ISetPrinter** printer, SHORT* copies,
                                                PrinterOrientation* orientation,
                                                VARIANT_BOOL* overide, VARIANT_BOOL* result) {
    return answer(result, [&] {
        // Window handles have 32 significant bits on every platform.
        const auto owner = reinterpret_cast<HWND>(static_cast<LONG_PTR>(window));
        return context_->uiSetPrintingPreferences(owner, type, text(reference),
                                                  printer ? *printer : nullptr,
                                                  defaultsIn(copies, orientation, overide));
    });
}

HRESULT UPPrinterUtil::UsePrintingPreferences(SHORT type, BSTR reference, _ISetPrinter** printer,
                                              SHORT* copies, PrinterOrientation* orientation,
                                              VARIANT_BOOL* overide, VARIANT_BOOL* result) {
    return answer(result, [&] {
        return context_->usePrintingPreferences(type, text(reference), printer ? *printer : nullptr,
                                                defaultsIn(copies, orientation, overide));
    });
}

HRESULT UPPrinterUtil::GetCopies(SHORT type, BSTR reference, SHORT* result) {
    return answer(result, [&] { return context_->getCopies(type, text(reference)); });
}

HRESULT UPPrinterUtil::GetPrinterDescription(SHORT type, BSTR reference, BSTR* result) {
    return answer(result, [&] { return context_->getPrinterDescription(type, text(reference)); });
}

}  // namespace vela
