// What is at a path. Nothing here fails: what cannot be found out is not there.
#pragma once

#include <string>

namespace vela {

// Hidden ones too; a folder or a device is no file.
bool fileExists(const std::wstring& path);

// Whether a path names a file: one that is there, or, where nothing is, one with an extension.
bool isProbablyFile(const std::wstring& path);

// Whether the file can be opened for writing now, or made where there is none. It is left as it is;
// one that is made to find out is gone again.
bool canBeWritten(const std::wstring& path);

// Makes an empty file under a name that no other has, in the folder for temporary files; its path,
// empty on failure.
std::wstring newTemporaryFile();

}  // namespace vela
