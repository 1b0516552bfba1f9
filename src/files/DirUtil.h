// The paths of the system's folders.
#pragma once

#include "contract.h"

namespace vela {

class DirUtil final : public Object<DirUtil, _DirUtil> {
  public:
    HRESULT STDMETHODCALLTYPE get_SystemDirectory(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_UserDirectory(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_AllUserAppDataDirectory(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_ProgramFilesCommonDirectory(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_ProgramFilesDirectory(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_TempDirectory(BSTR* result) override;
};

}  // namespace vela
