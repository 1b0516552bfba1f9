// The names of the stores that a manager's sections are kept in.
#pragma once

#include "contract.h"

namespace vela {

class UPDataSources final : public Object<UPDataSources, _UPDataSources> {
  public:
    // Local and shared documents are named after the logged-on user, in the current folder.
    UPDataSources();

    HRESULT STDMETHODCALLTYPE get_LocalSource(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_LocalSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE putref_LocalSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE get_SharedSource(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_SharedSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE putref_SharedSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE get_SessionSource(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_SessionSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE putref_SessionSource(VARIANT value) override;

    // The names as text; empty where a source holds none.
    std::wstring localName() const { return nameIn(local_); }
    std::wstring sharedName() const { return nameIn(shared_); }

  private:
    static std::wstring nameIn(const Variant& source);

    Variant local_;
    Variant shared_;
    Variant session_{std::wstring_view()};
};

}  // namespace vela
