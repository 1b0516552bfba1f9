// The items of one section, keyed by identity and group.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "collections/core/keyed_collection.h"
#include "contract.h"
#include "preferences/live_contexts.h"
#include "preferences/section_record.h"

namespace vela {

class UPItems final : public Object<UPItems, _UPItems> {
  public:
    HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** result) override;
    HRESULT STDMETHODCALLTYPE get_Count(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE get_Item(BSTR id, BSTR group, IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE Add(IDispatch** object, BSTR id, BSTR group) override;
    HRESULT STDMETHODCALLTYPE Remove(BSTR id, BSTR group) override;
    HRESULT STDMETHODCALLTYPE Clear() override;

    // Adds an item that was read from a store, in the place of one that has its identity. Throws
    // Error 457 when the key is taken all the same, 13 when `object` is no item.
    void addRead(const ComPtr<IDispatch>& object);

    // What was last read from a place in a document, or written there; null when nothing was, or
    // too many other places came after it.
    std::shared_ptr<const SectionRecord> recordOf(const SectionPlace& place) const;
    void setRecord(SectionRecord record);
    bool hasRecords() const { return !records_.empty(); }
    void forgetRecords() { records_.clear(); }

    // What is called after every addition and removal: the owning section is then not saved.
    // Nothing for a collection without an owner.
    void whenChanged(std::function<void()> changed) { changed_ = std::move(changed); }

  private:
    using Entries = KeyedCollection<ComPtr<IDispatch>>;

    // The item under identity and group, compared trimmed and without case; null when there is
    // none.
    ComPtr<IDispatch> find(std::wstring_view id, std::wstring_view group);
    // Whether there is an item of that identity. `key` is its SearchKey.
    bool replaces(_IUPItem* item, const std::wstring& key);
    void changed() const {
        // What it calls may give the items another owner.
        if (const auto call = changed_) call();
        noteChange();
    }

    Entries entries_;
    std::function<void()> changed_;
    std::vector<std::shared_ptr<const SectionRecord>> records_;  // the latest last
};

}  // namespace vela
