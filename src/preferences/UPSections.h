// The sections of one manager, keyed by their Id.
#pragma once

#include "collections/core/keyed_collection.h"
#include "contract.h"

namespace vela {

class UPSections final : public Object<UPSections, _UPSections> {
  public:
    ~UPSections() override;

    HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** result) override;
    HRESULT STDMETHODCALLTYPE get_Count(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE get_section(VARIANT index, _IUPSection** result) override;
    HRESULT STDMETHODCALLTYPE Add(_IUPSection** section) override;
    HRESULT STDMETHODCALLTYPE Remove(VARIANT index) override;

  private:
    using Entries = KeyedCollection<ComPtr<_IUPSection>>;

    // By Id, else by position; null when there is none.
    ComPtr<_IUPSection> find(const VARIANT& index);

    Entries entries_;
};

}  // namespace vela
