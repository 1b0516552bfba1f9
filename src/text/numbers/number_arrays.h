// Arrays of numbers, as callers pass them.
#pragma once

#include <cstdint>
#include <vector>

#include "automation/convert.h"

namespace vela {

// The elements of the array in `value`, of any numbers or of variants that hold some; each gives
// its lowest byte. None when there is no array. Throws Error 9 for an array of several dimensions,
// 13 or 6 for an element that is no 32-bit number.
std::vector<std::uint8_t> bytesIn(const VARIANT& value);

// An array of bytes, from 0 on.
Variant byteArray(const std::vector<std::uint8_t>& bytes);

// Sorts the elements at the positions from 1 on, ascending; those before stay. Throws Error 13
// unless it is an array of 16-bit numbers, and 9 unless it has one dimension that begins at 1 or
// before.
void sortFromOne(SAFEARRAY* array);

}  // namespace vela
