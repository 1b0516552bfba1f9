// The entry point of preferences: starts and stops them and hands out the facades.
#pragma once

#include "preferences/UPPrinterUtil.h"
#include "preferences/UPValueUtil.h"
#include "preferences/UPWindowUtil.h"

namespace vela {

class UPUtil final : public Object<UPUtil, _UPUtil> {
  public:
    explicit UPUtil(std::shared_ptr<UPContext> context = UPContext::shared());
    // Stops its context, for all who share it.
    ~UPUtil() override;

    HRESULT STDMETHODCALLTYPE NewPreferences(_UPUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_ActiveUPM(_UPManager** result) override;
    HRESULT STDMETHODCALLTYPE get_ActiveDataSources(_UPDataSources** result) override;
    HRESULT STDMETHODCALLTYPE StartUPM(BSTR applicationId, BSTR userId, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE StopUPM() override;
    HRESULT STDMETHODCALLTYPE get_Printers(_UPPrinterUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_Windows(_UPWindowUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_Values(_UPValueUtil** result) override;

  private:
    const ComPtr<UPValueUtil> values_ = make<UPValueUtil>();
    const ComPtr<UPWindowUtil> windows_ = make<UPWindowUtil>();
    const ComPtr<UPPrinterUtil> printers_ = make<UPPrinterUtil>();
    const std::shared_ptr<UPContext> context_;
};

}  // namespace vela
