// Window positions, as clients reach them.
#pragma once

#include "preferences/up_context.h"

namespace vela {

class UPWindowUtil final : public Object<UPWindowUtil, _UPWindowUtil> {
  public:
    HRESULT STDMETHODCALLTYPE LoadWindowPos(IDispatch** form, BSTR id, BSTR group,
                                            VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE SaveWindowPos(IDispatch** form, BSTR id, BSTR group) override;

    void setContext(std::shared_ptr<UPContext> context) { context_ = std::move(context); }

  private:
    std::shared_ptr<UPContext> context_;
};

}  // namespace vela
