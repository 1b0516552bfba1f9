// Sections, items and callers' objects for the tests of preferences.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <sstream>

#include "automation/enumerator.h"
#include "preferences/Section.h"
#include "preferences/XMLup.h"
#include "support/support.h"

namespace vela::test {

template <class Class>
ComPtr<IDispatch> asObject(const ComPtr<Class>& object) {
    ComPtr<IDispatch> result;
    EXPECT_EQ(object.As(&result), S_OK);
    return result;
}

inline std::wstring shown(IDispatch* object, const wchar_t* property) {
    return textOf(getProperty(object, property));
}

inline Variant str(std::wstring_view text) { return Variant(text); }

inline ComPtr<_UPItems> itemsOf(_IUPSection* section) {
    ComPtr<_UPItems> items;
    EXPECT_EQ(section->get_Items(&items), S_OK);
    return items;
}

// What a member gives through its last parameter.
template <class Result, class Object, class Member, class... Arguments>
Result got(Object* object, Member member, Arguments... arguments) {
    Result result{};
    EXPECT_EQ((object->*member)(arguments..., &result), S_OK);
    return result;
}
template <class Object, class Member, class... Arguments>
bool yes(Object* object, Member member, Arguments... arguments) {
    VARIANT_BOOL result = 99;
    EXPECT_EQ((object->*member)(arguments..., &result), S_OK);
    EXPECT_NE(result, 99);
    return isTrue(result);
}

using Fields = std::vector<std::pair<const wchar_t*, std::wstring>>;

// Adds a new item of the section's kind; its Id and Group are set through IUPItem.
inline HRESULT addItem(_IUPSection* section, std::wstring_view id, std::wstring_view group,
                       const Fields& fields = {}) {
    const auto item = got<ComPtr<IDispatch>>(section, &_IUPSection::CreateItem);
    for (const auto& [name, value] : fields) putProperty(item.Get(), name, Variant(value));
    return itemsOf(section)->Add(ComPtr(item).GetAddressOf(), Bstr(id).get(), Bstr(group).get());
}

inline ComPtr<_IUPSection> sectionWith(const SectionKind& kind, std::wstring_view id,
                                       std::wstring_view group, const Fields& fields = {}) {
    auto section = makeSection(kind);
    EXPECT_EQ(addItem(section.Get(), id, group, fields), S_OK);
    return section;
}

// The items in order, each as its key, '=' and the named fields, with a blank after each.
inline std::wstring contents(_IUPSection* section, const std::wstring& fields = L"Value") {
    std::wstring result;
    const auto enumerator = got<ComPtr<IUnknown>>(itemsOf(section).Get(), &_UPItems::get_NewEnum);
    eachVariant(enumerator.Get(), [&](const Variant& item) {
        result += shown(objectIn(item), L"SearchKey") + L"=";
        std::wistringstream names(fields);
        for (std::wstring name; names >> name;) {
            result += shown(objectIn(item), name.c_str()) + L" ";
        }
        return true;
    });
    return result;
}

// A document as this library writes it.
inline std::string document(const std::string& applications) {
    return "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n<UserPreferences version=\"1\">" +
           applications + "</UserPreferences>\r\n";
}
// Without the line breaks and indents that some parsers write between elements.
inline std::string compact(std::string xml) {
    for (std::size_t at = 0; (at = xml.find(">\r\n", at)) != xml.npos; ++at) {
        const auto next = xml.find_first_not_of("\r\n\t ", at + 1);
        if (next != xml.npos && xml[next] == '<') xml.erase(at + 1, next - at - 1);
    }
    return xml;
}
inline std::string ofAna(const std::string& sections) {
    return "<App id=\"SALES\"><App_User id=\"ANA\">" + sections + "</App_User></App>";
}

// An object as a script makes one: named properties, and no interface but IDispatch.
class ScriptObject final : public IDispatch {
  public:
    using Values = std::map<std::wstring, Variant>;
    explicit ScriptObject(Values values) : values_(std::move(values)) {
        InterlockedIncrement(&liveObjects);
    }
    ~ScriptObject() { InterlockedDecrement(&liveObjects); }

    std::wstring text(const wchar_t* name) { return textOf(values_.at(name)); }
    void set(const wchar_t* name, long value) { values_[name] = Variant(value); }
    std::set<std::wstring> refused;  // properties that cannot be set
    std::vector<std::wstring> sets;  // every property set, in order
    std::function<void()> whenRead;  // run before a property is read
    ComPtr<ITypeInfo> type;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        *result = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
        if (*result) AddRef();
        return *result ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        return left == 0 ? (delete this, 0) : left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = type ? 1 : 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        return type ? type.CopyTo(info) : E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                            DISPID* ids) override {
        DISPID id = 1;
        for (const auto& entry : values_) {
            if (_wcsicmp(entry.first.c_str(), names[0]) == 0) return *ids = id, S_OK;
            ++id;
        }
        return *ids = DISPID_UNKNOWN, DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* call,
                                     VARIANT* result, EXCEPINFO*, UINT*) override {
        auto& [name, value] = *std::next(values_.begin(), id - 1);
        if ((flags & DISPATCH_PROPERTYGET) && whenRead) whenRead();
        if (flags & DISPATCH_PROPERTYGET) return result ? VariantCopy(result, &value) : S_OK;
        if (refused.count(name)) return DISP_E_MEMBERNOTFOUND;
        sets.push_back(name);
        value = Variant(call->rgvarg[0]);
        return S_OK;
    }

  private:
    Values values_;
    ULONG references_ = 1;
};

inline ComPtr<ScriptObject> scriptObject(ScriptObject::Values values) {
    return adopted(new ScriptObject(std::move(values)));
}

}  // namespace vela::test
