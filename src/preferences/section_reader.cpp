#include "preferences/section_reader.h"

#include <algorithm>
#include <optional>

#include "automation/late_bound.h"
#include "preferences/Section.h"
#include "preferences/item_prints.h"
#include "preferences/stored_item.h"
#include "xml/core/xml_scanner.h"

namespace vela {

namespace {

using Attributes = std::span<const XmlScanner::Attribute>;

// Makes the items of one section.
class ItemReader {
  public:
    explicit ItemReader(_IUPSection* section) : section_(section), properties_(section) {}

    ComPtr<IDispatch> read(const Bstr& group, Attributes attributes) {
        ComPtr<IDispatch> object;
        checkRecorded(section_->CreateItem(&object));
        const ComPtr<_IUPItem> item = itemIn(object.Get());
        checkRecorded(item->put_Group(group.get()));
        if (attributes.empty()) return object;
        checkRecorded(item->put_Id(Bstr(attributes[0].value).get()));
        const auto& properties = properties_.of(object.Get());
        for (const auto& attribute : attributes.subspan(1)) {
            assign(object.Get(), properties, attribute);
        }
        return object;
    }
    ItemProperties& properties() { return properties_; }

  private:
    static void assign(IDispatch* item, const std::vector<ItemProperty>& properties,
                       const XmlScanner::Attribute& attribute) {
        const auto found = std::find_if(
            properties.begin(), properties.end(),
            [&](const ItemProperty& property) { return isNamed(property, attribute.name); });
        if (found != properties.end()) {
            assignStored(item, found->member, found->type, attribute.value);
        } else if (!typeInformationOf(item)) {
            // It may have more than the section lists.
            const std::wstring name(attribute.name);
            const DISPID member = findMember(item, name.c_str());
            if (member != DISPID_UNKNOWN) assignStored(item, member, VT_VARIANT, attribute.value);
        }
    }
    static bool isNamed(const ItemProperty& property, std::wstring_view name) {
        return property.attribute == name ||
               (property.name.size() == name.size() && property.name == upperCase(name));
    }

    _IUPSection* section_;
    ItemProperties properties_;
};

// Calls `visit(group, attributes)` for each stored item. False when groups were passed over.
template <class Visit>
bool eachStored(const XmlDocument& document, const UserPath& user, _IUPSection* section,
                Visit visit) {
    const XmlNode element = document.select(user.section(idOf(section)));
    if (!element) return true;
    // One text and its scanner: a call to the parser for each attribute takes several times as
    // long.
    const Bstr text = xmlOf(element);
    XmlScanner scanner(text.view());
    bool complete = true;
    std::optional<Bstr> group;
    for (auto event = scanner.next(); event != XmlScanner::Event::Done; event = scanner.next()) {
        if (event != XmlScanner::Event::Start) continue;
        const Attributes attributes = scanner.attributes();
        if (scanner.depth() == 2) {
            group.reset();
            if (!attributes.empty()) group.emplace(attributes[0].value);
            complete = complete && group;
        } else if (scanner.depth() == 3 && group) {
            visit(*group, attributes);
        }
    }
    return complete && scanner.depth() == 0;
}

// Items of a caller's own do not know that reading adds no change to be saved: the flag is put back
// at the end.
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

bool readSection(const XmlDocument& document, const UserPath& user, _IUPSection* section) {
    const ComPtr<_UPItems> items = itemsOf(section);
    const auto ours = own<UPItems>(items.Get());
    std::optional<KeptSavedFlag> saved;
    if (!ours) saved.emplace(section);
    ItemReader reader(section);
    bool allTaken = true;
    const auto take = [&](const Bstr& group, Attributes attributes) {
        allTaken &= quietly([&] {
            ComPtr<IDispatch> item = reader.read(group, attributes);
            if (ours) ours->addRead(item);
            else checkRecorded(items->Add(item.GetAddressOf(), nullptr, nullptr));
        });
    };
    return eachStored(document, user, section, take) && allTaken;
}

std::vector<KnownItem> knownItems(const XmlDocument& document, const UserPath& user,
                                  _IUPSection* section) {
    std::vector<KnownItem> known;
    ItemReader reader(section);
    eachStored(document, user, section, [&](const Bstr& group, Attributes attributes) {
        quietly([&] {
            const ComPtr<IDispatch> item = reader.read(group, attributes);
            const auto kept = printOf(item.Get(), reader.properties());
            if (kept) known.push_back({*kept, printOf(group.view(), attributes)});
        });
    });
    return known;
}

}  // namespace vela
