// Files that hold one compressed block each (see deflate_block.h).
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "text/codecs/core/deflate_block.h"

namespace vela {

enum class FileOutcome { Done, NotFound, AlreadyExists, Failed };

// How files are read and written whole. `save` makes a new file, never touches one that is there,
// and leaves none behind when it fails.
struct WholeFiles {
    std::function<FileOutcome(const std::wstring& name, std::string& content)> load;
    std::function<FileOutcome(const std::wstring& name, std::string_view content)> save;
};

// Numbers of the errors that follow, those of zlib and of blocks apart.
inline constexpr int kFileSystemError = -1;
inline constexpr int kFileNotFound = 53;
inline constexpr int kFileAlreadyExists = 58;

// Write what `input` holds, compressed or uncompressed, to a new file `output`. After an error no
// file was made. The errors, in the order of the checks:
//
//     99  "No file specified to compress"             `input` is empty
//     99  "No output file specified to compress to"   `output` is empty
//     99  "Input and output files are the same"       the names are, in any case
//     53  "File Not Found"                            `input` is not there
//     -1  zlibMessage(-1)                             `input` cannot be read
//     99  "File Contains No Data"                     `input` is empty
//         those of compressBlock() or decompressBlock()
//     58  "File Already Exists"                       `output` is there
//     -1  zlibMessage(-1)                             `output` cannot be written
//
// The source is the routine, "ZCompressFile" or "ZDecompressFile", and for errors of one file also
// what was done with it, and its name. Throws std::bad_alloc, and what `files` throws.
DeflateError compressFile(const WholeFiles& files, const std::wstring& input,
                          const std::wstring& output, int level = kBestLevel);
DeflateError decompressFile(const WholeFiles& files, const std::wstring& input,
                            const std::wstring& output);

}  // namespace vela
