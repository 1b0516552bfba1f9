// The general keyed collection that members return and scripts can create.
#pragma once

#include "collections/core/keyed_collection.h"
#include "contract.h"

namespace vela {

class Collection final : public Object<Collection, _Collection> {
  public:
    HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE Add(VARIANT item, VARIANT key, VARIANT before,
                                  VARIANT after) override;
    HRESULT STDMETHODCALLTYPE get_Count(LONG* result) override;
    HRESULT STDMETHODCALLTYPE Remove(VARIANT index) override;
    HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** result) override;

    KeyedCollection<Variant>& entries() { return entries_; }

  private:
    // The position that a number or a key stands for. Throws Error 5, 9 or 13.
    std::size_t position(const VARIANT& index);

    KeyedCollection<Variant> entries_;
};

}  // namespace vela
