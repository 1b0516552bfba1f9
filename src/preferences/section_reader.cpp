#include "preferences/section_reader.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "automation/late_properties.h"
#include "preferences/Section.h"
#include "preferences/stored_item.h"

namespace vela {

namespace {

// The names of the item class's own properties, upper-cased; none where it does not tell.
std::vector<std::wstring> propertyNames(IDispatch* item) {
    std::vector<std::wstring> names = settableProperties(item);
    for (std::wstring& name : names) name = upperCase(name);
    return names;
}

// Reads the items of one section. They are all of one class: what an attribute's name stands for is
// found out once, where the class tells of its properties.
class ItemReader {
  public:
    explicit ItemReader(_IUPSection* section) : section_(section) {}

    ComPtr<IDispatch> read(const Bstr& group, const XmlNode& element) {
        ComPtr<IDispatch> object;
        checkRecorded(section_->CreateItem(&object));
        const ComPtr<_IUPItem> item = itemIn(object.Get());
        checkRecorded(item->put_Group(group.get()));
        if (!std::exchange(asked_, true)) properties_ = propertyNames(object.Get());
        bool first = true;
        eachAttribute(element, [&](const Bstr& name, const Bstr& value) {
            if (first) checkRecorded(item->put_Id(value.get()));
            else assign(object.Get(), memberFor(object.Get(), name), value);
            first = false;
        });
        return object;
    }

  private:
    // The number of the item's property of that name; DISPID_UNKNOWN when it has none.
    DISPID memberFor(IDispatch* item, const Bstr& name) {
        if (properties_.empty()) return findMember(item, name.get());
        const auto end = properties_.end();
        const bool has = std::find(properties_.begin(), end, upperCase(name.view())) != end;
        return has ? numbers_.of(item, name.get()) : DISPID_UNKNOWN;
    }

    static void assign(IDispatch* item, DISPID id, const Bstr& value) {
        if (id == DISPID_UNKNOWN) return;
        VARIANT argument{};
        argument.vt = VT_BSTR;
        argument.bstrVal = value.get();
        quietly([&] {
            check(callLateBound(item, id, DISPATCH_PROPERTYPUT, single(argument), nullptr));
        });
    }

    _IUPSection* section_;
    bool asked_ = false;
    std::vector<std::wstring> properties_;
    MemberNumbers numbers_;
};

// Reading adds items, which is no change to be saved: the flag is put back at the end.
class KeptSavedFlag {
  public:
    explicit KeptSavedFlag(_IUPSection* section) : section_(section) {
        checkRecorded(section->get_Saved(&saved_));
    }
    ~KeptSavedFlag() { section_->put_Saved(saved_); }
    KeptSavedFlag(const KeptSavedFlag&) = delete;
    KeptSavedFlag& operator=(const KeptSavedFlag&) = delete;

  private:
    _IUPSection* section_;
    VARIANT_BOOL saved_ = VARIANT_TRUE;
};

}  // namespace

void readSection(const XmlDocument& document, const UserPath& user, _IUPSection* section) {
    const XmlNode element = document.select(user.section(idOf(section)));
    if (!element) return;
    const ComPtr<_UPItems> items = itemsOf(section);
    const KeptSavedFlag saved(section);
    ItemReader reader(section);
    eachChild(element, [&](const XmlNode& group) {
        const Bstr groupText(firstAttribute(group));
        eachChild(group, [&](const XmlNode& child) {
            ComPtr<IDispatch> item = reader.read(groupText, child);
            checkRecorded(items->Add(item.GetAddressOf(), nullptr, nullptr));
        });
    });
}

}  // namespace vela
