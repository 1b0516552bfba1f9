// A store that keeps sections in an XML document. Callers know it as IUPDataSource.
#pragma once

#include "contract.h"

namespace vela {

class UPDataSourceXML final : public Object<UPDataSourceXML, _IUPDataSource> {
  public:
    explicit UPDataSourceXML(std::wstring fileName) : fileName_(std::move(fileName)) {}

    HRESULT STDMETHODCALLTYPE get_DataSource(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_DataSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE putref_DataSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE Load(BSTR applicationId, BSTR userId, _IUPSection** section,
                                   VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE Save(BSTR applicationId, BSTR userId, _IUPSection** section,
                                   VARIANT_BOOL* result) override;

  private:
    std::wstring fileName_;
};

}  // namespace vela
