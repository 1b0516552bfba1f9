// Folders, drives and files as objects of the platform's scripting runtime.
#pragma once

#include <string>

#include "contract.h"

namespace vela {

// Each throws Error when there is no such thing.
ComPtr<IFolder> folderObject(const std::wstring& path);
ComPtr<IDrive> driveObject(const std::wstring& path);
ComPtr<IFile> fileObject(const std::wstring& path);

// What is at a path, and around it; null where there is no such thing.
struct PathObjects {
    ComPtr<IFolder> folder;  // the path itself if it is a folder, else the one that holds it
    ComPtr<IDrive> drive;
    ComPtr<IFile> file;
};
PathObjects objectsAt(const std::wstring& path);

}  // namespace vela
