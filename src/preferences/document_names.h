// How documents are named.
#pragma once

#include <string>

namespace vela {

// Of the two documents of a user.
inline constexpr wchar_t kLocalSuffix[] = L".up1.xml";
inline constexpr wchar_t kSharedSuffix[] = L".up2.xml";

// The name itself. Throws Error unless it ends in ".XML", in any case: only such files are
// documents.
const std::wstring& documentName(const std::wstring& fileName);

}  // namespace vela
