#include "preferences/document_names.h"

#include "automation/error.h"
#include "text/core/upper_case.h"

namespace vela {

bool isDocumentName(const std::wstring& fileName) { return upperCase(fileName).ends_with(L".XML"); }

const std::wstring& documentName(const std::wstring& fileName) {
    if (isDocumentName(fileName)) return fileName;
    throw Error{E_INVALIDARG, kLibraryName, L"The name of a document ends in .XML: " + fileName};
}

}  // namespace vela
