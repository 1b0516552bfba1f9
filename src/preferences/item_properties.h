// The properties of a section's items, as a store knows them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "automation/late_properties.h"
#include "contract.h"

namespace vela {

struct ItemProperty {
    std::wstring name;       // in upper case; one that XML allows
    std::wstring attribute;  // the same in lower case
    DISPID member;
    VARTYPE type;  // VT_VARIANT where the class does not tell
    bool stored;   // whether the section keeps it
};

// What is asked of an item's class once, for the items of one section, which may be of several
// classes.
class ItemProperties {
  public:
    // Reads the section's Properties list.
    explicit ItemProperties(_IUPSection* section);

    // All that can be assigned, in the order of the class's members. An item without type
    // information has those of the list, in its order. Good until the next call.
    const std::vector<ItemProperty>& of(IDispatch* item);

  private:
    struct Class {
        ComPtr<ITypeInfo> info;
        std::vector<ItemProperty> properties;
    };

    std::vector<ItemProperty> described(ITypeInfo* info) const;
    std::vector<ItemProperty> listed(IDispatch* item) const;
    bool isListed(const std::wstring& name) const;

    const std::wstring list_;  // in upper case
    std::vector<Class> classes_;
    std::vector<ItemProperty> undescribed_;
};

// A property's value as documents hold it, dates as dd-mm-yyyy and the zero date as nothing; none
// when it cannot be read, or has no text.
std::optional<std::wstring> storedValue(IDispatch* item, const ItemProperty& property);
// Assigns the text of a document; false when the property does not take it.
bool assignStored(IDispatch* item, DISPID member, VARTYPE type, std::wstring_view value);

}  // namespace vela
