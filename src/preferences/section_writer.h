// Writing a section into a document.
//
// An item's attributes are its Id and then the fields that the section's Properties list names, in
// the order of the item class's members. All the rest of the document stays.
#pragma once

#include "contract.h"
#include "preferences/preference_document.h"

namespace vela {

// Puts the section in the place of the stored one; without items, in its place is nothing. False
// when there is nothing to change: no items, and none stored. Throws Error.
bool replaceSection(const XmlDocument& document, const UserPath& user, _IUPSection* section);

}  // namespace vela
