// Work on collections that callers bring: any object with a collection's members.
#pragma once

#include "automation/adapter.h"

namespace vela {

// Whether an item stands under `key`. Objects that can tell through a member Exists are asked for
// it: their Item may add what it does not find. Failures count as no
// and leave no error info.
bool containsKey(IDispatch* collection, std::wstring_view key);

// Removes every item. Throws Error when the collection refuses.
void emptyCollection(IDispatch* collection);

}  // namespace vela
