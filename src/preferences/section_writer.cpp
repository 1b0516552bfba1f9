#include "preferences/section_writer.h"

#include <map>
#include <optional>
#include <vector>

#include "automation/error.h"
#include "preferences/Section.h"
#include "preferences/item_prints.h"
#include "preferences/stored_item.h"
#include "xml/core/xml_text.h"

namespace vela {

namespace {

// ---- the section's text ------------------------------------------------------------------------

// The text of a section's element. To set the attributes of thousands of elements one by one takes
// the platform's parser twice as long as to read them.
class SectionText {
  public:
    explicit SectionText(_IUPSection* section)
        : id_(idOf(section)),
          properties_(section),
          description_(textProperty(section, &_IUPSection::get_Description)) {
        if (isXmlName(id_)) return;
        throw Error{E_INVALIDARG, kLibraryName, L"Elements cannot be named after " + id_};
    }

    ItemProperties& properties() { return properties_; }

    // False for an item that does not tell its identity.
    bool add(IDispatch* object) {
        Bstr id, group;
        const bool known = quietly([&] {
            const ComPtr<_IUPItem> item = itemIn(object);
            checkRecorded(item->get_Id(id.put()));
            checkRecorded(item->get_Group(group.put()));
        });
        if (known) add(object, id.view(), groupText(group.view()));
        return known;
    }
    // Adds the text of an item's element.
    void add(std::wstring_view group, std::wstring_view item) { groupText(group) += item; }
    // Adds the text of an element as it is.
    void addOther(std::wstring_view element) { others_ += element; }

    bool isEmpty() const { return groups_.empty() && others_.empty(); }
    std::wstring text() const {
        std::wstring text = L"<" + id_ + L"_Section";
        appendAttribute(text, L"id", id_);
        appendAttribute(text, L"description", description_);
        text += L">";
        for (const auto& [group, items] : groups_) {
            text += L"<" + id_ + L"_Group";
            appendAttribute(text, L"id", group);
            text.append(L">").append(items).append(L"</" + id_ + L"_Group>");
        }
        return text + others_ + L"</" + id_ + L"_Section>";
    }

  private:
    void add(IDispatch* object, std::wstring_view id, std::wstring& text) {
        text.append(L"<").append(id_).append(L"_Item");
        appendAttribute(text, L"id", id);
        for (const ItemProperty& property : properties_.of(object)) {
            if (!property.stored) continue;
            const auto value = storedValue(object, property);
            if (value) appendAttribute(text, property.attribute, *value);
        }
        text += L"/>";
    }

    // Groups come in the order of their first items.
    std::wstring& groupText(std::wstring_view id) {
        const auto [place, isNew] = places_.try_emplace(std::wstring(id), groups_.size());
        if (isNew) groups_.emplace_back(id, std::wstring());
        return groups_[place->second].second;
    }

    const std::wstring id_;
    ItemProperties properties_;
    const std::wstring description_;
    std::vector<std::pair<std::wstring, std::wstring>> groups_;  // Id and items
    std::map<std::wstring, std::size_t> places_;                 // in groups_
    std::wstring others_;
};

// ---- its place ---------------------------------------------------------------------------------

XmlElement append(const XmlDocument& document, const XmlNode& parent, std::wstring_view name,
                  const std::wstring& id) {
    const XmlElement element = document.createElement(name);
    setAttribute(element, Bstr(L"id"), Variant(id));
    check(parent->appendChild(element.Get(), nullptr));
    return element;
}

// The two below are made when missing.

XmlNode applicationElement(const XmlDocument& document, const UserPath& user) {
    if (const XmlNode found = document.select(user.application())) return found;
    return append(document, rootOf(document), L"App", user.applicationId());
}

XmlNode userElement(const XmlDocument& document, const UserPath& user) {
    const XmlNode application = applicationElement(document, user);
    if (const XmlNode found = document.select(user.user())) return found;
    return append(document, application, L"App_User", user.userId());
}

void remove(const XmlNode& node) {
    XmlNode parent;
    check(node->get_parentNode(&parent));
    check(parent->removeChild(node.Get(), nullptr));
}

// Puts the new section, if it holds anything, in the place of the old one, if there is one.
void exchange(const XmlDocument& document, const UserPath& user, const XmlNode& old,
              const SectionText& section) {
    std::optional<XmlDocument> made;
    XmlNode parent;
    if (!section.isEmpty()) {
        made = parsed(section.text());
        if (!made) throw Error{E_FAIL, kLibraryName, L"The parser refuses the section"};
        parent = userElement(document, user);
    }
    if (made) check(parent->appendChild(made->root().Get(), nullptr));
    if (old) remove(old);
}

// ---- items -------------------------------------------------------------------------------------

// The items of a stored section, and what in it cannot be read as items.
struct StoredSection {
    struct Item {
        std::wstring group;
        Bstr text;
    };

    explicit StoredSection(const XmlNode& section) {
        if (section) eachChild(section, [&](const XmlNode& group) { addGroup(group); });
    }

    std::vector<Item> items;
    std::vector<ItemPrint> prints;  // of the items
    std::wstring others;            // the text of their elements

  private:
    void addGroup(const XmlNode& group) {
        std::wstring id;
        if (!quietly([&] { id = firstAttribute(group); }))
            return void(others += xmlOf(group).view());
        eachChild(group, [&](const XmlNode& item) {
            Bstr text = xmlOf(item);
            XmlScanner scanner(text.view());
            scanner.next();
            prints.push_back(printOf(id, scanner.attributes()));
            items.push_back({id, std::move(text)});
        });
    }
};

// The items that tell their identity.
struct OurItems {
    OurItems(_IUPSection* section, ItemProperties& properties) {
        eachItem(itemsOf(section).Get(), [&](const Variant& item) {
            const auto print = printOf(objectIn(item), properties);
            if (print) {
                items.emplace_back(objectIn(item));
                prints.push_back(*print);
            }
            areAll = areAll && print;
            return true;
        });
    }

    std::vector<ComPtr<IDispatch>> items;
    std::vector<ItemPrint> prints;
    bool areAll = true;
};

}  // namespace

bool hasItems(_IUPSection* section) {
    bool found = false;
    eachItem(itemsOf(section).Get(), [&](const Variant&) {
        found = true;
        return false;
    });
    return found;
}

Replaced replaceSection(const XmlDocument& document, const UserPath& user, _IUPSection* section) {
    const XmlNode old = document.select(user.section(idOf(section)));
    SectionText text(section);
    bool changed = old != nullptr, complete = true;
    eachItem(itemsOf(section).Get(), [&](const Variant& item) {
        complete &= text.add(objectIn(item));
        return changed = true;
    });
    if (old && !complete) return Replaced::Refused;
    if (changed) exchange(document, user, old, text);
    return changed ? Replaced::Changed : Replaced::Unchanged;
}

std::vector<KnownItem> mergeSection(const XmlDocument& document, const UserPath& user,
                                    _IUPSection* section, std::span<const KnownItem> known) {
    const XmlNode old = document.select(user.section(idOf(section)));
    SectionText text(section);
    const OurItems ours(section, text.properties());
    const StoredSection theirs(old);
    Merge merge = merged(known, ours.prints, theirs.prints, ours.areAll);
    for (const MergedItem& item : merge.items) {
        const bool told = !item.ours || text.add(ours.items[item.index].Get());
        if (!told) raise(RuntimeError::InvalidProcedureCall);  // it did a moment ago
        if (!item.ours)
            text.add(theirs.items[item.index].group, theirs.items[item.index].text.view());
    }
    text.addOther(theirs.others);
    exchange(document, user, old, text);
    return std::move(merge.known);
}

}  // namespace vela
