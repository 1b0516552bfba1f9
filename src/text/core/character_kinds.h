// What kind of character a unit is.
#pragma once

namespace vela {

// Whether the platform calls the unit a letter, of whatever script, with accents or without;
// surrogates are none. Throws std::runtime_error when the platform cannot tell at all.
bool isLetter(wchar_t unit);

}  // namespace vela
