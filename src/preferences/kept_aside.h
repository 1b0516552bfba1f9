// Copies of the documents that could not be read.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace vela {

// Keeps the content of the file, as it was read, under a name of its own, the next free one that
// ends in ".bad", and with the file's attributes, so that its replacement loses nothing. A process
// killed at any point leaves the whole copy or none. Throws Error.
void keepAside(const std::wstring& fileName, std::span<const std::byte> content);

}  // namespace vela
