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

    using Entries = KeyedCollection<ComPtr<IDispatch>>;
    Entries& entries() { return entries_; }
    // Called after every addition and removal, to mark the owning section as not saved. A
    // collection without an owner calls nothing.
    void setParentSection(std::function<void()> markUnsaved) { changed_ = std::move(markUnsaved); }

    // The item under identity and group, compared trimmed and without case; null when there is
    // none.
    ComPtr<IDispatch> find(std::wstring_view id, std::wstring_view group);
    // Adds an item under its own identity and group, in the place of one that has the same. Throws
    // Error 457 when the key is taken all the same, 13 when `object` is no item.
    void add(const ComPtr<IDispatch>& object);

  private:
    void changed() const {
        // What it calls may give the items another owner.
        if (const auto mark = changed_) mark();
    }

    Entries entries_;
    std::function<void()> changed_;
};

}  // namespace vela
