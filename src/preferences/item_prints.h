// Items as they are compared with the document.
#pragma once

#include <optional>
#include <span>

#include "preferences/core/item_merge.h"
#include "preferences/item_properties.h"
#include "xml/core/xml_scanner.h"

namespace vela {

// As the document would hold the item; none when it does not tell its identity.
std::optional<ItemPrint> printOf(IDispatch* item, ItemProperties& properties);
// As the document holds it. The first attribute is the Id.
ItemPrint printOf(std::wstring_view group, std::span<const XmlScanner::Attribute> attributes);

}  // namespace vela
