// Copies of the documents that could not be read.
#pragma once

#include <string>

namespace vela {

// Copies the file to a name of its own, the next free one that ends in ".bad", so that its
// replacement loses nothing. Throws Error.
void keepAside(const std::wstring& fileName);

}  // namespace vela
