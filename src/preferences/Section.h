// The five section classes: alike but for a few constants.
#pragma once

#include <functional>
#include <memory>

#include "contract.h"
#include "preferences/UPItems.h"
#include "preferences/live_contexts.h"

namespace vela {

struct SectionKind {
    const wchar_t* id;
    const wchar_t* description;
    const wchar_t* properties;  // the item fields that a store keeps, in order
    ComPtr<IDispatch> (*createItem)();
};
extern const SectionKind kPPSection;
extern const SectionKind kUISection;
extern const SectionKind kDPSection;
extern const SectionKind kKVSection;
extern const SectionKind kRPSection;

// Implements the members of IUPSection for an object with those interfaces.
template <class Derived, class... Interfaces>
class SectionMembers : public Object<Derived, Interfaces...> {
  public:
    explicit SectionMembers(const SectionKind& kind) : kind_(kind) {
        // The items may outlive the section, so they share the flag rather than the section.
        items_->whenChanged([saved = saved_] { *saved = false; });
    }

    HRESULT STDMETHODCALLTYPE get_Id(BSTR* result) override { return give(result, kind_.id); }
    HRESULT STDMETHODCALLTYPE put_Id(BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_Description(BSTR* result) override {
        return give(result, kind_.description);
    }
    HRESULT STDMETHODCALLTYPE put_Description(BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_DataSourceManager(_IUPDataSource** result) override {
        return answer(result, [&] { return source_; });
    }
    HRESULT STDMETHODCALLTYPE putref_DataSourceManager(_IUPDataSource* value) override {
        source_ = value;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_Saved(VARIANT_BOOL* result) override {
        return answer(result, [&] { return *saved_; });
    }
    HRESULT STDMETHODCALLTYPE put_Saved(VARIANT_BOOL value) override {
        *saved_ = isTrue(value);
        if (!*saved_) noteChange();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_Loaded(VARIANT_BOOL* result) override {
        return answer(result, [&] { return loaded_; });
    }
    HRESULT STDMETHODCALLTYPE put_Loaded(VARIANT_BOOL value) override {
        loaded_ = isTrue(value);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_Items(_UPItems** result) override {
        return answer(result, [&] { return items_; });
    }
    HRESULT STDMETHODCALLTYPE get_Properties(BSTR* result) override {
        return give(result, kind_.properties);
    }
    HRESULT STDMETHODCALLTYPE CreateItem(IDispatch** result) override {
        return answer(result, kind_.createItem);
    }

  private:
    const SectionKind& kind_;
    const ComPtr<UPItems> items_ = make<UPItems>();
    ComPtr<_IUPDataSource> source_;
    const std::shared_ptr<bool> saved_ = std::make_shared<bool>(true);
    bool loaded_ = false;
};

class Section final : public SectionMembers<Section, _IUPSection> {
    using SectionMembers::SectionMembers;
};
class RPSection final : public SectionMembers<RPSection, _RPSection, _IUPSection> {
  public:
    RPSection() : SectionMembers(kRPSection) {}
};

// The Id and the items of any section, read through the interface. Throw Error; a section without a
// collection of items is Error 5.
inline std::wstring idOf(_IUPSection* section) {
    return textProperty(section, &_IUPSection::get_Id);
}
ComPtr<_UPItems> itemsOf(_IUPSection* section);
// Its store; null when it has none.
ComPtr<_IUPDataSource> storeOf(_IUPSection* section);
bool flagOf(_IUPSection* section, HRESULT (STDMETHODCALLTYPE _IUPSection::*get)(VARIANT_BOOL*));
// Whether the section may replace, or be merged with, what is stored of it: it was loaded, or it is
// known what it has not.
bool hasStored(_IUPSection* section);
// Whether both are one object. Adapters are made anew for every call, so pointers do not tell.
bool isSame(_IUPSection* one, _IUPSection* other);

// Calls `visit(item)` for each item until it returns false. Throws Error when they do not tell.
void eachItem(_UPItems* items, const std::function<bool(const Variant&)>& visit);

// A new section of a kind.
ComPtr<_IUPSection> makeSection(const SectionKind& kind);

}  // namespace vela
