// Sections and items for the tests of preferences.
#pragma once

#include <sstream>

#include "preferences/Section.h"
#include "preferences/document_cache.h"
#include "preferences/up_context.h"
#include "preferences/xml_up.h"
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

// Lets preferences use documents in the folder.
inline void useFolder(const ComPtr<UPManager>& manager, const TemporaryFolder& folder) {
    manager->dataSources()->put_LocalSource(Variant(folder.path(L"ana.up1.xml")));
    manager->dataSources()->put_SharedSource(Variant(folder.path(L"ana.up2.xml")));
}
inline std::shared_ptr<UPContext> contextIn(const TemporaryFolder& folder) {
    const auto context = std::make_shared<UPContext>();
    useFolder(context->manager(), folder);
    return context;
}

// The items in order, each as its key, '=' and the named fields, with a blank after each.
inline std::wstring contents(_IUPSection* section, const std::wstring& fields = L"Value") {
    std::wstring result;
    eachItem(itemsOf(section).Get(), [&](const Variant& item) {
        result += shown(objectIn(item), L"SearchKey") + L"=";
        std::wistringstream names(fields);
        for (std::wstring name; names >> name;) {
            result += shown(objectIn(item), name.c_str()) + L" ";
        }
        return true;
    });
    return result;
}

}  // namespace vela::test
