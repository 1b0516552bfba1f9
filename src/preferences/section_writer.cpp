#include "preferences/section_writer.h"

#include <map>
#include <vector>

#include "automation/error.h"
#include "preferences/Section.h"
#include "preferences/item_prints.h"
#include "preferences/stored_item.h"

namespace vela {

namespace {

// ---- elements ----------------------------------------------------------------------------------

XmlElement newElement(const XmlDocument& document, const std::wstring& name, std::wstring_view id) {
    const XmlElement element = document.createElement(name);
    setAttribute(element, Bstr(L"id"), Variant(id));
    return element;
}

XmlElement append(const XmlDocument& document, const XmlNode& parent, const std::wstring& name,
                  std::wstring_view id) {
    const XmlElement element = newElement(document, name, id);
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

// A new element for the section, outside the document's tree.
XmlElement newSection(const XmlDocument& document, _IUPSection* section) {
    const std::wstring id = idOf(section);
    const XmlElement made = newElement(document, id + L"_Section", id);
    setAttribute(made, Bstr(L"description"),
                 Variant(textProperty(section, &_IUPSection::get_Description)));
    return made;
}

XmlNode copyOf(const XmlNode& node) {
    XmlNode copy;
    check(node->cloneNode(VARIANT_TRUE, &copy));
    return copy;
}

void remove(const XmlNode& node) {
    XmlNode parent;
    check(node->get_parentNode(&parent));
    check(parent->removeChild(node.Get(), nullptr));
}

// Puts a new section, if it holds anything, in the place of the old one, if there is one.
void exchange(const XmlDocument& document, const UserPath& user, const XmlNode& old,
              const XmlElement& made) {
    VARIANT_BOOL filled = VARIANT_FALSE;
    check(made->hasChildNodes(&filled));
    const XmlNode parent = isTrue(filled) ? userElement(document, user) : nullptr;
    if (old) remove(old);
    if (parent) check(parent->appendChild(made.Get(), nullptr));
}

// ---- items -------------------------------------------------------------------------------------

// Writes items into a section's element.
class ItemWriter {
  public:
    ItemWriter(const XmlDocument& document, const XmlElement& section, const std::wstring& id,
               ItemProperties& properties)
        : document_(document),
          section_(section),
          groupName_(id + L"_Group"),
          itemName_(id + L"_Item"),
          properties_(properties) {}

    // False for an item that does not tell its identity.
    bool write(IDispatch* object) {
        Bstr id, group;
        const bool known = quietly([&] {
            const ComPtr<_IUPItem> item = itemIn(object);
            checkRecorded(item->get_Id(id.put()));
            checkRecorded(item->get_Group(group.put()));
        });
        if (known) write(object, id.view(), group.str());
        return known;
    }
    void copy(const std::wstring& group, const XmlNode& item) { add(group, copyOf(item)); }

  private:
    void write(IDispatch* object, std::wstring_view id, const std::wstring& group) {
        const XmlElement element = newElement(document_, itemName_, id);
        for (const ItemProperty& property : properties_.of(object)) {
            if (!property.stored) continue;
            auto value = storedValue(object, property);
            if (value) setAttribute(element, property.attribute, *std::move(value));
        }
        add(group, element);
    }
    void add(const std::wstring& group, const XmlNode& item) {
        check(groupElement(group)->appendChild(item.Get(), nullptr));
    }

    const XmlElement& groupElement(const std::wstring& id) {
        XmlElement& group = groups_[id];
        if (!group) group = append(document_, section_, groupName_, id);
        return group;
    }

    const XmlDocument& document_;
    const XmlElement& section_;
    const std::wstring groupName_;
    const std::wstring itemName_;
    ItemProperties& properties_;
    std::map<std::wstring, XmlElement> groups_;
};

// The items of a stored section, and what in it cannot be read as items.
struct StoredSection {
    struct Item {
        std::wstring group;
        XmlNode node;
    };

    explicit StoredSection(const XmlNode& section) {
        if (section) eachChild(section, [&](const XmlNode& group) { addGroup(group); });
    }

    std::vector<Item> items;
    std::vector<ItemPrint> prints;  // of the items
    std::vector<XmlNode> others;

  private:
    void addGroup(const XmlNode& group) {
        std::wstring id;
        if (!quietly([&] { id = firstAttribute(group); })) return others.push_back(group);
        eachChild(group, [&](const XmlNode& item) {
            const Bstr text = xmlOf(item);
            XmlScanner scanner(text.view());
            scanner.next();
            items.push_back({id, item});
            prints.push_back(printOf(id, scanner.attributes()));
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
    const XmlElement made = newSection(document, section);
    ItemProperties properties(section);
    ItemWriter writer(document, made, idOf(section), properties);
    bool changed = old != nullptr, complete = true;
    eachItem(itemsOf(section).Get(), [&](const Variant& item) {
        complete &= writer.write(objectIn(item));
        return changed = true;
    });
    if (old && !complete) return Replaced::Refused;
    if (changed) exchange(document, user, old, made);
    return changed ? Replaced::Changed : Replaced::Unchanged;
}

std::vector<KnownItem> mergeSection(const XmlDocument& document, const UserPath& user,
                                    _IUPSection* section, std::span<const KnownItem> known) {
    const XmlNode old = document.select(user.section(idOf(section)));
    ItemProperties properties(section);
    const OurItems ours(section, properties);
    const StoredSection theirs(old);
    Merge merge = merged(known, ours.prints, theirs.prints, ours.areAll);

    const XmlElement made = newSection(document, section);
    ItemWriter writer(document, made, idOf(section), properties);
    for (const MergedItem& item : merge.items) {
        if (item.ours) writer.write(ours.items[item.index].Get());
        else writer.copy(theirs.items[item.index].group, theirs.items[item.index].node);
    }
    for (const XmlNode& other : theirs.others) {
        check(made->appendChild(copyOf(other).Get(), nullptr));
    }
    exchange(document, user, old, made);
    return std::move(merge.known);
}

}  // namespace vela
