// Compressed files on the disk.
#pragma once

#include "files/core/deflate_file.h"

namespace vela {

// The files of the platform, for compressFile() and decompressFile(). Those of 2 GB and more cannot
// be read.
WholeFiles filesOnDisk();

}  // namespace vela
