#include "files/DirUtil.h"

#include <shlobj.h>

#include "files/special_folders.h"

namespace vela {

HRESULT DirUtil::get_SystemDirectory(BSTR* result) {
    return answer(result, [] { return specialFolder(CSIDL_SYSTEM); });
}

HRESULT DirUtil::get_UserDirectory(BSTR* result) {
    return answer(result, [] { return specialFolder(CSIDL_PROFILE); });
}

HRESULT DirUtil::get_AllUserAppDataDirectory(BSTR* result) {
    return answer(result, [] { return specialFolder(CSIDL_COMMON_APPDATA); });
}

HRESULT DirUtil::get_ProgramFilesCommonDirectory(BSTR* result) {
    return answer(result, [] { return specialFolder(CSIDL_PROGRAM_FILES_COMMON); });
}

HRESULT DirUtil::get_ProgramFilesDirectory(BSTR* result) {
    return answer(result, [] { return specialFolder(CSIDL_PROGRAM_FILES); });
}

HRESULT DirUtil::get_TempDirectory(BSTR* result) { return answer(result, temporaryFolder); }

HRESULT ClassOf<_DirUtil>::create(REFIID id, void** result) {
    return createObject<DirUtil>(id, result);
}

}  // namespace vela
