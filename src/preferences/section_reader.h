// Reading a section out of a document.
//
// It goes by position: the first attribute of a group is the group, the first of an item its Id,
// whatever they are called. Of the other attributes those count that are called as properties of
// the item; what does not fit these is ignored.
#pragma once

#include "contract.h"
#include "preferences/preference_document.h"

namespace vela {

// Adds the stored items, if any, to the section's, which stays saved if it is. Throws Error.
void readSection(const XmlDocument& document, const UserPath& user, _IUPSection* section);

}  // namespace vela
