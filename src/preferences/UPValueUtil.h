// Key/value pairs and default paths, as clients reach them.
#pragma once

#include "preferences/up_context.h"

namespace vela {

class UPValueUtil final : public Object<UPValueUtil, _UPValueUtil> {
  public:
    HRESULT STDMETHODCALLTYPE LoadDefaultPath(BSTR reference, BSTR group, BSTR* path, BSTR* file,
                                              BSTR* ext, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE SaveDefaultPath(BSTR reference, BSTR group, BSTR* path, BSTR* file,
                                              BSTR* ext) override;
    HRESULT STDMETHODCALLTYPE GetValue(BSTR reference, BSTR group, BSTR defaultValue,
                                       BSTR* result) override;
    HRESULT STDMETHODCALLTYPE SaveValue(BSTR reference, BSTR group, BSTR value) override;

    void setContext(std::shared_ptr<UPContext> context) { context_ = std::move(context); }

  private:
    std::shared_ptr<UPContext> context_;
};

}  // namespace vela
