#include "files/runtime_objects.h"

#include "files/core/path_parts.h"
#include "files/drives.h"
#include "files/file_state.h"
#include "files/full_path.h"

namespace vela {

namespace {

// What a member of the runtime's file system gives for a path. Devices are none of its objects,
// though the runtime may take them for files.
template <class Interface>
ComPtr<Interface> fromRuntime(const wchar_t* member, const std::wstring& path) {
    if (path.empty() || isDevice(path)) raise(RuntimeError::InvalidProcedureCall);
    CLSID id;
    ComPtr<IDispatch> fileSystem;
    check(CLSIDFromProgID(L"Scripting.FileSystemObject", &id));
    check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&fileSystem)));
    Variant argument{std::wstring_view(path)};
    Variant result;
    checkRecorded(LateBound(fileSystem).call(member, DISPATCH_METHOD, single(argument), &result));
    ComPtr<Interface> object;
    if (!objectIn(result)) raise(RuntimeError::TypeMismatch);
    check(objectIn(result)->QueryInterface(IID_PPV_ARGS(&object)));
    return object;
}

// The folder that holds what is at a full path.
std::wstring holderOf(const std::wstring& path) {
    std::wstring folder = folderOf(path);
    const std::size_t root = driveOf(folder).size() + 1;
    if (folder.size() > root) folder.pop_back();
    return folder;
}

}  // namespace

ComPtr<IFolder> folderObject(const std::wstring& path) {
    return fromRuntime<IFolder>(L"GetFolder", path);
}

ComPtr<IDrive> driveObject(const std::wstring& path) {
    return fromRuntime<IDrive>(L"GetDrive", driveHolding(path));
}

ComPtr<IFile> fileObject(const std::wstring& path) { return fromRuntime<IFile>(L"GetFile", path); }

PathObjects objectsAt(const std::wstring& path) {
    PathObjects objects;
    const std::wstring full = fullPath(path);
    quietly([&] { objects.drive = driveObject(full); });
    if (fileExists(full)) quietly([&] { objects.file = fileObject(full); });
    else quietly([&] { objects.folder = folderObject(full); });
    if (!objects.folder) quietly([&] { objects.folder = folderObject(holderOf(full)); });
    return objects;
}

}  // namespace vela
