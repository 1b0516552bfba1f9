// Where the report parameters of a manager are kept.
#pragma once

#include "preferences/section_manager.h"

namespace vela {

// The store that a caller names, or hands over; that of shared preferences when he does neither.
// Null for what is no store.
ComPtr<_IUPDataSource> storeFor(UPManager& manager, const VARIANT& given);

// What becomes of parameters that could not be saved when others are registered with `store`: they
// give way to those of another store.
Unsaved unsavedFor(UPManager& manager, _IUPDataSource* store);

}  // namespace vela
