// What the five item classes share.
//
// An item's public properties and its IUPItem ones have the same names and signatures and do not
// always do the same, so the two interfaces are implemented by two bases: the item's fields, and
// ItemIdentity, which goes through four functions of the item.
//
// Identities are without the characters that documents cannot hold, so that they are found again.
#pragma once

#include "contract.h"
#include "text/core/upper_case.h"
#include "xml/core/xml_text.h"

namespace vela {

// IUPItem, in terms of the item's own getters and setters.
class ItemIdentity : public _IUPItem {
  public:
    using Interface = _IUPItem;

    HRESULT STDMETHODCALLTYPE get_Id(BSTR* result) final {
        return answer(result, [&] { return itemId(); });
    }
    HRESULT STDMETHODCALLTYPE put_Id(BSTR value) final {
        return guard([&] { setItemId(text(value)); });
    }
    HRESULT STDMETHODCALLTYPE get_Group(BSTR* result) final {
        return answer(result, [&] { return itemGroup(); });
    }
    HRESULT STDMETHODCALLTYPE put_Group(BSTR value) final {
        return guard([&] { setItemGroup(text(value)); });
    }
    HRESULT STDMETHODCALLTYPE get_SearchKey(BSTR* result) final {
        return answer(result, [&] { return itemId() + L"@" + itemGroup(); });
    }

  protected:
    ~ItemIdentity() = default;

  private:
    virtual std::wstring itemId() = 0;
    virtual void setItemId(std::wstring_view value) = 0;
    virtual std::wstring itemGroup() = 0;
    virtual void setItemGroup(std::wstring_view value) = 0;
};

// An item whose IUPItem properties are the stored texts, as they stand. `Fields` implements the
// public interface and has the texts as id_ and group_.
template <class Fields>
class StoredItem final : public Object<StoredItem<Fields>, Fields, ItemIdentity> {
  private:
    std::wstring itemId() override { return this->id_; }
    void setItemId(std::wstring_view value) override { this->id_ = xmlText(value); }
    std::wstring itemGroup() override { return this->group_; }
    void setItemGroup(std::wstring_view value) override { this->group_ = xmlText(value); }
};

// An object seen as an item; throws Error 13 when it is none.
inline ComPtr<_IUPItem> itemIn(IDispatch* object) {
    ComPtr<_IUPItem> item;
    if (!object || FAILED(queryOrAdapt<_IUPItem>(object, &item))) raise(RuntimeError::TypeMismatch);
    return item;
}

// The public properties store identities in upper case.
inline std::wstring upperIdentity(std::wstring_view value) { return upperCase(xmlText(value)); }
inline HRESULT takeUpper(std::wstring& field, BSTR value) {
    return guard([&] { field = upperIdentity(text(value)); });
}

}  // namespace vela
