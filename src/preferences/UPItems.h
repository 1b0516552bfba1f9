// The items of one section, keyed by identity and group.
#pragma once

#include <functional>

#include "collections/core/keyed_collection.h"
#include "contract.h"

namespace vela {

class UPItems final : public Object<UPItems, _UPItems> {
  public:
    HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** result) override;
    HRESULT STDMETHODCALLTYPE get_Count(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE get_Item(BSTR id, BSTR group, IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE Add(IDispatch** object, BSTR id, BSTR group) override;
    HRESULT STDMETHODCALLTYPE Remove(BSTR id, BSTR group) override;
    HRESULT STDMETHODCALLTYPE Clear() override;

    // What is called after every addition and removal: the owning section is then not saved.
    // Nothing for a collection without an owner.
    void whenChanged(std::function<void()> changed) { changed_ = std::move(changed); }

  private:
    using Entries = KeyedCollection<ComPtr<IDispatch>>;

    // The item under identity and group, compared trimmed and without case; null when there is
    // none.
    ComPtr<IDispatch> find(std::wstring_view id, std::wstring_view group);
    // Adds an item under its own identity and group, in the place of one that has the same. Throws
    // Error 457 when the key is taken all the same, 13 when `object` is no item.
    void add(const ComPtr<IDispatch>& object);
    void changed() const {
        // What it calls may give the items another owner.
        if (const auto call = changed_) call();
    }

    Entries entries_;
    std::function<void()> changed_;
};

}  // namespace vela
