// Writing a section into a document.
//
// An item's attributes are its Id and then the fields that the section's Properties list names, in
// the order of the item class's members; a field that cannot be read, or has no text, is left out.
// An item that does not tell its identity is left out. All the rest of the document stays.
#pragma once

#include "contract.h"
#include "preferences/core/item_merge.h"
#include "preferences/preference_document.h"

namespace vela {

// Both leave the document as it was when they throw Error.

enum class Replaced {
    Unchanged,  // no items, and none stored
    Changed,
    // Nothing was done: items that do not tell their identity may be among the stored ones.
    Refused
};
// Puts the section in the place of the stored one; without items, in its place is nothing.
Replaced replaceSection(const XmlDocument& document, const UserPath& user, _IUPSection* section);

// Puts the section together with the stored one in its place, by item; see merged(). What of it
// cannot be read as an item stays. Returns what is known of the items from now on.
std::vector<KnownItem> mergeSection(const XmlDocument& document, const UserPath& user,
                                    _IUPSection* section, std::span<const KnownItem> known);

bool hasItems(_IUPSection* section);

}  // namespace vela
