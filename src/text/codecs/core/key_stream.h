// The cipher for stored text: bytes combined with a stream that repeats a key. It keeps text from
// being read in passing, and no more.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// `bytes` with each one combined (exclusive or) with one of the stream; doing it again undoes it.
//
// The stream goes through the key again and again. The first pass gives the key's bytes, every
// further pass what the same place gave last plus 17, modulo 256. Without a key the result is
// empty. Throws std::bad_alloc.
std::string ciphered(std::string bytes, std::string_view key);

}  // namespace vela
