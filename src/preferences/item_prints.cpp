#include "preferences/item_prints.h"

#include "preferences/stored_item.h"
#include "xml/core/xml_text.h"

namespace vela {

namespace {

// Without what a document cannot hold.
void add(FingerprintMaker& print, std::wstring_view text) {
    if (isXmlText(text)) print.add(text);
    else print.add(xmlText(text));
}

}  // namespace

std::optional<ItemPrint> printOf(IDispatch* object, ItemProperties& properties) {
    std::optional<ItemPrint> result;
    quietly([&] {
        const ComPtr<_IUPItem> item = itemIn(object);
        const std::wstring id = textProperty(item.Get(), &_IUPItem::get_Id);
        const std::wstring group = textProperty(item.Get(), &_IUPItem::get_Group);
        FingerprintMaker content;
        add(content, id);
        for (const ItemProperty& property : properties.of(object)) {
            if (!property.stored) continue;
            const auto value = storedValue(object, property);
            if (!value) continue;
            content.add(property.attribute);
            add(content, *value);
        }
        result = ItemPrint{identityPrint(xmlText(id), xmlText(group)), content.result()};
    });
    return result;
}

ItemPrint printOf(std::wstring_view group, std::span<const XmlScanner::Attribute> attributes) {
    FingerprintMaker content;
    for (const auto& attribute : attributes) {
        if (&attribute != &attributes[0]) content.add(attribute.name);
        content.add(attribute.value);
    }
    const std::wstring_view id = attributes.empty() ? L"" : std::wstring_view(attributes[0].value);
    return {identityPrint(id, group), content.result()};
}

}  // namespace vela
