// Finds and keeps the items of one registered section.
#pragma once

#include "preferences/Section.h"
#include "preferences/UPManager.h"
#include "text/core/text_normalisation.h"

namespace vela {

// What becomes of a section of the same kind that is registered already, and could not be saved.
enum class Unsaved {
    Stays,    // instead of the new one: it has what its store has not
    Replaced  // it belongs to other identities, or another store
};

// Registers a new section of `kind`, kept in `store`, with `manager`. What can be saved should have
// been.
void registerSection(UPManager& manager, const SectionKind& kind,
                     const ComPtr<_IUPDataSource>& store, Unsaved unsaved = Unsaved::Stays);

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
    // The item of an identity, or a new one that has it and is not added yet. Identities are
    // compared trimmed and without case, and stored so.
    ComPtr<Item> itemFor(std::wstring_view id, std::wstring_view group) const {
        if (auto found = getItem(id, group)) return found;
        auto item = make<Item>();
        ComPtr<_IUPItem> identity;
        check(item.As(&identity));
        checkRecorded(identity->put_Id(Bstr(normalisedIdentity(id)).get()));
        checkRecorded(identity->put_Group(Bstr(normalisedIdentity(group)).get()));
        return item;
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
    ComPtr<_UPItems> items() const { return itemsOf(section().Get()); }

  private:
    ComPtr<_IUPSection> section() const {
        ComPtr<_IUPSection> section = manager_->section(kind_.id);
        if (!section) raise(RuntimeError::InvalidProcedureCall);
        return section;
    }

    ComPtr<UPManager> manager_;
    const SectionKind& kind_;
};

}  // namespace vela
