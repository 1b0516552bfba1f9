#include "preferences/section_writer.h"

#include <map>
#include <vector>

#include "automation/late_properties.h"
#include "preferences/Section.h"
#include "preferences/stored_item.h"
#include "text/dates/core/calendar.h"

namespace vela {

namespace {

// ---- fields ------------------------------------------------------------------------------------

// A field as the document holds it; dates as dd-mm-yyyy, the zero date as nothing.
Variant fieldText(Variant value) {
    if (value.vt == VT_BSTR) return value;
    if (value.vt != VT_DATE) return converted(value, VT_BSTR);
    SYSTEMTIME time;
    if (value.date <= 0 || !VariantTimeToSystemTime(value.date, &time)) return Variant(L"");
    return Variant(dateText(std::chrono::year{time.wYear} / time.wMonth / time.wDay));
}

struct StoredField {
    Bstr attribute;  // in lower case
    std::wstring property;
};

// The fields that a section keeps, in the order of its item class's members.
std::vector<StoredField> fieldsOf(_IUPSection* section) {
    const std::wstring listed = upperCase(textProperty(section, &_IUPSection::get_Properties));
    ComPtr<IDispatch> sample;
    checkRecorded(section->CreateItem(&sample));
    std::vector<StoredField> fields;
    for (const std::wstring& name : settableProperties(sample.Get())) {
        const std::wstring upper = upperCase(name);
        if (upper == L"GROUP" || upper == L"ID") continue;
        if (!listed.empty() && listed.find(L"[" + upper + L"]") == listed.npos) continue;
        std::wstring lower = name;
        for (wchar_t& c : lower) c = lowerCase(c);
        fields.push_back({Bstr(lower), name});
    }
    return fields;
}

// ---- elements ----------------------------------------------------------------------------------

XmlElement append(const XmlDocument& document, const XmlNode& parent, const std::wstring& name,
                  std::wstring_view id) {
    const XmlElement element = document.createElement(name);
    setAttribute(element, Bstr(L"id"), Variant(id));
    check(parent->appendChild(element.Get(), nullptr));
    return element;
}

// The three below are made when missing.

XmlNode applicationElement(const XmlDocument& document, const UserPath& user) {
    if (const XmlNode found = document.select(user.application())) return found;
    return append(document, rootOf(document), L"App", user.applicationId());
}

XmlNode userElement(const XmlDocument& document, const UserPath& user) {
    const XmlNode application = applicationElement(document, user);
    if (const XmlNode found = document.select(user.user())) return found;
    return append(document, application, L"App_User", user.userId());
}

XmlNode sectionElement(const XmlDocument& document, const UserPath& user, _IUPSection* section) {
    const std::wstring id = idOf(section);
    const XmlNode parent = userElement(document, user);
    if (const XmlNode found = document.select(user.section(id))) return found;
    const XmlElement made = append(document, parent, id + L"_Section", id);
    setAttribute(made, Bstr(L"description"),
                 Variant(textProperty(section, &_IUPSection::get_Description)));
    return made;
}

// The group elements of one section, found by their id and made when missing.
class Groups {
  public:
    Groups(const XmlDocument& document, const XmlNode& section, const std::wstring& sectionId)
        : document_(document), section_(section), name_(sectionId + L"_Group") {
        eachChild(section, [&](const XmlNode& child) {
            XmlElement element;
            Bstr name;
            check(child.As(&element));
            check(child->get_nodeName(name.put()));
            if (name.view() == name_) elements_.try_emplace(attribute(element, L"id"), element);
        });
    }

    const XmlElement& at(const std::wstring& group) {
        auto found = elements_.find(group);
        if (found == elements_.end()) {
            const XmlElement made = append(document_, section_, name_, nameable(group));
            found = elements_.emplace(group, made).first;
        }
        return found->second;
    }

  private:
    const XmlDocument& document_;
    XmlNode section_;
    std::wstring name_;
    std::map<std::wstring, XmlElement> elements_;
};

// ---- items -------------------------------------------------------------------------------------

// Writes the items of one section.
class ItemWriter {
  public:
    ItemWriter(const XmlDocument& document, const XmlNode& element, _IUPSection* section)
        : document_(document),
          name_(idOf(section) + L"_Item"),
          fields_(fieldsOf(section)),
          groups_(document, element, idOf(section)) {}

    void write(IDispatch* object) {
        const ComPtr<_IUPItem> item = itemIn(object);
        const XmlElement& group = groups_.at(textProperty(item.Get(), &_IUPItem::get_Group));
        const XmlElement element = document_.createElement(name_);
        setAttribute(element, Bstr(L"id"), Variant(textProperty(item.Get(), &_IUPItem::get_Id)));
        for (const StoredField& field : fields_) {
            setAttribute(element, field.attribute,
                         fieldText(getProperty(object, field.property.c_str())));
        }
        check(group->appendChild(element.Get(), nullptr));
    }

  private:
    const XmlDocument& document_;
    const std::wstring name_;
    const std::vector<StoredField> fields_;
    Groups groups_;
};

// False when none is stored.
bool removeSection(const XmlDocument& document, const UserPath& user, _IUPSection* section) {
    const XmlNode element = document.select(user.section(idOf(section)));
    if (!element) return false;
    XmlNode parent;
    check(element->get_parentNode(&parent));
    check(parent->removeChild(element.Get(), nullptr));
    return true;
}

void writeItems(const XmlDocument& document, const UserPath& user, _IUPSection* section) {
    ItemWriter writer(document, sectionElement(document, user, section), section);
    eachItem(itemsOf(section).Get(), [&](const Variant& item) {
        writer.write(objectIn(item));
        return true;
    });
}

bool hasItems(_IUPSection* section) {
    bool found = false;
    eachItem(itemsOf(section).Get(), [&](const Variant&) {
        found = true;
        return false;
    });
    return found;
}

}  // namespace

bool replaceSection(const XmlDocument& document, const UserPath& user, _IUPSection* section) {
    const bool filled = hasItems(section);
    const bool removed = removeSection(document, user, section);
    if (filled) writeItems(document, user, section);
    return filled || removed;
}

}  // namespace vela
