// A store that keeps sections in an XML document. Callers know it as IUPDataSource.
#pragma once

#include "contract.h"
#include "files/full_path.h"

namespace vela {

class UPDataSourceXML final : public Object<UPDataSourceXML, _IUPDataSource> {
  public:
    // The name, and the path that it stands for; made absolute where none is given.
    explicit UPDataSourceXML(std::wstring name) { setName(std::move(name)); }
    UPDataSourceXML(std::wstring name, std::wstring path)
        : name_(std::move(name)), path_(std::move(path)) {}

    // Of the document; empty for no name.
    const std::wstring& path() const { return path_; }

    HRESULT STDMETHODCALLTYPE get_DataSource(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_DataSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE putref_DataSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE Load(BSTR applicationId, BSTR userId, _IUPSection** section,
                                   VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE Save(BSTR applicationId, BSTR userId, _IUPSection** section,
                                   VARIANT_BOOL* result) override;

  private:
    void setName(std::wstring name) {
        path_ = fullPath(name);
        name_ = std::move(name);
    }

    std::wstring name_;
    std::wstring path_;  // what the name stood for when it was given: the current folder changes
};

}  // namespace vela
