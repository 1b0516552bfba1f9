// Finds and keeps the items of one registered section.
#pragma once

#include "preferences/DPItem.h"
#include "preferences/KVItem.h"
#include "preferences/PPItem.h"
#include "preferences/RPItem.h"
#include "preferences/Section.h"
#include "preferences/UIItem.h"
#include "preferences/UPManager.h"

namespace vela {

// Registers a section of `kind`, kept in the document `source`, with `manager`. A section that is
// there already stays, with what it has loaded and changed, if `keep` says so and it is kept in the
// same document; otherwise the new one takes its place, and a running manager saves the old one
// first if `keep` says so.
void registerSection(UPManager& manager, const SectionKind& kind, const std::wstring& source,
                     bool keep);

template <class Item>
class SectionManager {
  public:
    SectionManager(ComPtr<UPManager> manager, const SectionKind& kind)
        : manager_(std::move(manager)), kind_(kind) {}

    // Null when there is no such item.
    ComPtr<Item> getItem(std::wstring_view id, std::wstring_view group) const {
        ComPtr<IDispatch> found;
        const Bstr idText(id);
        const Bstr groupText(group);
        checkRecorded(items()->get_Item(idText.get(), groupText.get(), &found));
        return own<Item>(found.Get());
    }
    // Adds an item under its own identity, in the place of one that has it; the section is then not
    // saved.
    void addItem(const ComPtr<Item>& item) const {
        ComPtr<IDispatch> object;
        check(item.CopyTo(IID_IDispatch, reinterpret_cast<void**>(object.GetAddressOf())));
        checkRecorded(items()->Add(object.GetAddressOf(), nullptr, nullptr));
    }
    // Removes every item; the section is then not saved.
    void clear() const {
        checkRecorded(items()->Clear());
        checkRecorded(section()->put_Saved(VARIANT_FALSE));
    }
    ComPtr<_UPItems> items() const {
        ComPtr<_UPItems> items;
        checkRecorded(section()->get_Items(&items));
        if (!items) raise(RuntimeError::InvalidProcedureCall);
        return items;
    }

  private:
    ComPtr<_IUPSection> section() const {
        ComPtr<_IUPSection> section = manager_->section(kind_.id);
        if (!section) raise(RuntimeError::InvalidProcedureCall);
        return section;
    }

    ComPtr<UPManager> manager_;
    const SectionKind& kind_;
};

using PPManager = SectionManager<PPItem>;
using UIManager = SectionManager<UIItem>;
using DPManager = SectionManager<DPItem>;
using KVManager = SectionManager<KVItem>;

}  // namespace vela
