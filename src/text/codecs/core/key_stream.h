// The cipher for stored text: bytes combined with a stream that repeats a key. It keeps text from
// being read in passing, and no more.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// `bytes` with each one combined (exclusive or) with one of the stream; doing it again undoes it.
//
// The stream goes through the upper-cased key again and again. The first pass gives the low byte of
// each unit of the key, every further pass what the same place gave last plus 17, modulo 256. Units
// above 255 are not meant for keys: others may read them differently. Without a key the result is
// empty. Throws std::bad_alloc.
std::string ciphered(std::string bytes, std::wstring_view key);

}  // namespace vela
