// How documents are named.
#pragma once

#include <string>

namespace vela {

// Of the two documents of a user.
inline constexpr wchar_t kLocalSuffix[] = L".up1.xml";
inline constexpr wchar_t kSharedSuffix[] = L".up2.xml";

// Whether the name ends in ".XML", in any case: only such files are documents.
bool isDocumentName(const std::wstring& fileName);
// The name itself. Throws Error for another one.
const std::wstring& documentName(const std::wstring& fileName);

}  // namespace vela
