// Reading a section out of a document.
//
// It goes by position: the first attribute of a group is the group, the first of an item its Id,
// whatever they are called. Of the other attributes those count that are called as properties of
// the item; what does not fit these is ignored. A group without attributes, and an item that the
// section cannot make or take, are passed over.
#pragma once

#include "contract.h"
#include "preferences/core/item_merge.h"
#include "preferences/preference_document.h"

namespace vela {

// Adds the stored items, if any, to the section's, which stays saved if it is. False when some had
// to be passed over. Throws Error.
bool readSection(const XmlDocument& document, const UserPath& user, _IUPSection* section);

// The stored items as readSection() would make them.
std::vector<KnownItem> knownItems(const XmlDocument& document, const UserPath& user,
                                  _IUPSection* section);

}  // namespace vela
